// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <span>

namespace clavo::evdev
{

/// The pointer's horizontal position, added up from the motion of the mice. A desktop that
/// accelerates the pointer has it elsewhere, but both stop at the edges of the screens.
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
