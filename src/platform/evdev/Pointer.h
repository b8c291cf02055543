// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <span>

namespace clavo::evdev
{

/// Where the pointer is, from left to right, as far as the movements of the mice tell: a desktop
/// that accelerates them has it elsewhere, but never beyond the screens, where both stop.
class Pointer
{
public:
    /// The pointer's x, in the middle of the screens until it has moved; 0 without screens.
    [[nodiscard]] double x(std::span<const ScreenExtent> screens);

    void move(double distance, std::span<const ScreenExtent> screens);

    /// To a place between the left edge of the screens (0) and the right one (1).
    void place(double fraction, std::span<const ScreenExtent> screens);

private:
    double m_x = 0;
    bool m_isPlaced = false;
};

} // namespace clavo::evdev
