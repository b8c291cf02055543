// SPDX-License-Identifier: MIT
#include "platform/evdev/Mouse.h"

#include <algorithm>
#include <cstdlib>

namespace clavo::evdev
{
namespace
{

constexpr int stepsOfDetent = 120;
constexpr int mostDetents = 10;

struct Range {
    double left = 0;
    double right = 0;

    [[nodiscard]] double at(double fraction) const { return left + fraction * (right - left); }
};

Range rangeOf(std::span<const ScreenExtent> screens)
{
    if (screens.empty())
        return {};
    Range range{.left = screens.front().x, .right = screens.front().x};
    for (const auto& screen : screens) {
        range.left = std::min(range.left, screen.x);
        range.right = std::max(range.right, screen.x + screen.width);
    }
    return range;
}

} // namespace

int Wheel::turnedDetents(int detents) const
{
    return m_hasFineSteps ? 0 : std::abs(std::clamp(detents, -mostDetents, mostDetents));
}

int Wheel::turnedSteps(int steps)
{
    constexpr int most = mostDetents * stepsOfDetent;
    const int turned = std::clamp(steps, -most, most);
    if ((m_rest < 0) != (turned < 0)) // Turned back: the incomplete detent no longer counts.
        m_rest = 0;
    m_rest += turned;
    const int detents = m_rest / stepsOfDetent;
    m_rest %= stepsOfDetent;
    return std::abs(detents);
}

double Pointer::x(std::span<const ScreenExtent> screens)
{
    move(0, screens);
    return m_x;
}

void Pointer::move(double distance, std::span<const ScreenExtent> screens)
{
    const auto range = rangeOf(screens);
    const auto from = m_isPlaced ? m_x : range.at(0.5);
    m_isPlaced = m_isPlaced || !screens.empty();
    m_x = std::clamp(from + distance, range.left, range.right);
}

void Pointer::place(double fraction, std::span<const ScreenExtent> screens)
{
    m_isPlaced = !screens.empty();
    m_x = rangeOf(screens).at(std::clamp(fraction, 0.0, 1.0));
}

} // namespace clavo::evdev
