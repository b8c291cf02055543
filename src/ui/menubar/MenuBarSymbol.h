// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>

namespace clavo
{

/// White for a dark colour, black for a light one.
[[nodiscard]] QColor contrasting(const QColor& color);

/// The symbol that tells whether the sounds are on: "keyboard.fill" at full opacity, or "keyboard"
/// at half. Nobody tells the colour of the tray: a faint rim of the contrasting colour sets the
/// symbol off from one that is not as expected, and is lost in one that is. Holds a picture for
/// each of the usual sizes of trays and their double.
[[nodiscard]] QIcon menuBarSymbol(bool enabled, const QColor& color);

} // namespace clavo
