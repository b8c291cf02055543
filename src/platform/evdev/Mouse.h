// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <span>

namespace clavo::evdev
{

/// The detents of one wheel. A wheel with fine steps reports each movement twice: in steps of 1/120
/// detent and in whole detents. The whole detents are then ignored.
class Wheel
{
public:
    explicit Wheel(bool hasFineSteps) : m_hasFineSteps(hasFineSteps) {}

    /// The detents of one report, in either direction; at most ten, since larger reports are not
    /// turned by hand.
    [[nodiscard]] int turnedDetents(int detents) const;
    [[nodiscard]] int turnedSteps(int steps);

private:
    bool m_hasFineSteps = false;
    int m_rest = 0; // Steps of an incomplete detent; negative when downwards.
};

/// The pointer's horizontal position, added up from the motion of the mice. On a
/// desktop that accelerates the pointer the real one is elsewhere, but both stop at the edges of
/// the screens.
class Pointer
{
public:
    /// The pointer's x, in the middle of the screens until it has moved; 0 without screens.
    [[nodiscard]] double x(std::span<const ScreenExtent> screens);

    void move(double distance, std::span<const ScreenExtent> screens);

    /// Sets the position, from the left edge of the screens (0) to the right one (1).
    void place(double fraction, std::span<const ScreenExtent> screens);

private:
    double m_x = 0;
    bool m_isPlaced = false;
};

} // namespace clavo::evdev
