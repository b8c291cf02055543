// SPDX-License-Identifier: MIT
#include "platform/evdev/Wheel.h"

#include <algorithm>
#include <cstdlib>

namespace clavo::evdev
{
namespace
{

constexpr int stepsOfDetent = 120;
constexpr int mostDetents = 10;

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

} // namespace clavo::evdev
