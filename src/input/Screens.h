// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace clavo
{

/// The horizontal extent of one screen, in the unit of the pointer's position.
struct ScreenExtent {
    double x = 0;
    double width = 0;
};

/// The screens of the desktop as they are now.
/// Thread: main.
class Screens
{
public:
    virtual ~Screens() = default;

    /// Every screen's extent; empty when there is none. Valid until the next call.
    [[nodiscard]] virtual std::span<const ScreenExtent> extents() = 0;
};

} // namespace clavo
