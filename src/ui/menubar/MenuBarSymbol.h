// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>

namespace clavo
{

/// White for a dark colour, black for a light one.
[[nodiscard]] QColor contrasting(const QColor& color);

/// The symbol that shows whether sounds are on: a filled, opaque keyboard, or an outlined keyboard
/// at half opacity.
///
/// The symbol is drawn in this colour on a translucent plate of the contrasting colour. The plate
/// keeps it visible if the tray's unknown background is not the expected one, and is hardly visible
/// if it is.
///
/// If the session's icon themes contain the symbolic icon, the result carries its name: hosts then
/// draw that icon in their own text colour.
[[nodiscard]] QIcon menuBarSymbol(bool enabled, const QColor& color);

} // namespace clavo
