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

/// The current screens of the desktop. Thread: main.
class Screens
{
public:
    virtual ~Screens() = default;

    /// The extents of all screens, if any. Valid until the next call.
    [[nodiscard]] virtual std::span<const ScreenExtent> extents() = 0;
};

} // namespace clavo
