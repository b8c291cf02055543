// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>

namespace clavo
{

/// White for a dark colour, black for a light one.
[[nodiscard]] QColor contrasting(const QColor& color);

/// The symbol that shows whether the sounds are on: a filled keyboard at full opacity, or an
/// outlined one at half.
///
/// Its pictures have this colour and lie on a plate of the contrasting colour. The colour of the
/// tray is unknown: the plate sets the symbol off from a tray that is not as expected, and is
/// hardly seen in one that is.
///
/// It has the name of a symbolic icon, which hosts draw in the colour of their own texts, where the
/// icon themes of the session have that icon; the pictures are for the others.
[[nodiscard]] QIcon menuBarSymbol(bool enabled, const QColor& color);

} // namespace clavo
