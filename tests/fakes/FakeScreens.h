// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <vector>

namespace clavo
{

/// Screens put up by hand.
class FakeScreens final : public Screens
{
public:
    std::vector<ScreenExtent> screens = {{.x = 0, .width = 1440}};

    [[nodiscard]] std::span<const ScreenExtent> extents() override { return screens; }
};

} // namespace clavo
