// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// True if a window appears where the program puts it. On Wayland the compositor chooses the place.
/// Called after the application object is made.
[[nodiscard]] bool canPlaceQtWindows();

} // namespace clavo
