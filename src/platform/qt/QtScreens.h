// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <memory>

namespace clavo
{

/// The screens as the window system reports them to Qt, in its logical pixels. None without an
/// application.
[[nodiscard]] std::unique_ptr<Screens> makeQtScreens();

} // namespace clavo
