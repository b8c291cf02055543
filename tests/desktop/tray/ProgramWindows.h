// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <optional>
#include <string_view>
#include <vector>

namespace clavo
{

/// Where a window of this program is on the screen, if it is seen inside another program's window.
/// Wholly: a tray shows an icon before it has made room for it, half outside the screen.
[[nodiscard]] std::optional<QRect> embeddedWindow(std::string_view program);

/// Where the window is that this program has opened on the desktop itself; the uppermost one.
[[nodiscard]] std::optional<QRect> openWindow(std::string_view program);

/// Whether the keys go to that window, and not to one that it has come in the place of.
[[nodiscard]] bool hasFocus(std::string_view program);

/// The widths of the icons that the uppermost of its windows brings along, in rising order.
[[nodiscard]] std::vector<int> iconWidths(std::string_view program);

} // namespace clavo
