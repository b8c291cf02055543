// SPDX-License-Identifier: MIT
#include "platform/evdev/Pointer.h"

#include <algorithm>

namespace clavo::evdev
{
namespace
{

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
