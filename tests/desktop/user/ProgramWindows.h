// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <optional>
#include <string_view>
#include <vector>

namespace clavo
{

/// Where a window of this program is on the screen while it is visible inside another program's
/// window. Only if all of it is on the screen: a tray shows an icon before it has made room for it.
[[nodiscard]] std::optional<QRect> embeddedWindow(std::string_view program);

/// Where the topmost window is that this program has opened on the desktop itself.
[[nodiscard]] std::optional<QRect> openWindow(std::string_view program);

/// Whether that window has the keyboard focus, and not the window that it has replaced.
[[nodiscard]] bool hasFocus(std::string_view program);

/// The widths of the icons of its topmost window, in rising order.
[[nodiscard]] std::vector<int> iconWidths(std::string_view program);

} // namespace clavo
