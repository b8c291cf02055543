// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <vector>

namespace clavo
{

/// The screens as the window system tells Qt, in its logical pixels. None without an application.
class QtScreens final : public Screens
{
public:
    [[nodiscard]] std::span<const ScreenExtent> extents() override;

private:
    std::vector<ScreenExtent> m_extents;
};

} // namespace clavo
