// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

namespace clavo
{

/// The desktop without a screen.
class NoScreens final : public Screens
{
public:
    [[nodiscard]] std::span<const ScreenExtent> extents() override { return {}; }
};

} // namespace clavo
