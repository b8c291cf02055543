// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QSize>

class QScreen;
class QWindow;

namespace clavo
{

/// One screen in device-independent pixels.
struct ScreenArea {
    QRect whole;
    QRect work; // Without the desktop's own panels.
};

[[nodiscard]] ScreenArea areaOf(const QScreen& screen);

/// From the icon, and from the edges of the work area.
inline constexpr int panelGap = 6;

/// The greatest height of a panel on the screen.
[[nodiscard]] int largestPanelHeight(const ScreenArea& screen);

/// The top left corner of the panel that belongs to the icon, or to a click, which is a place
/// without extent: beside the icon, on its side towards the middle of the screen, centred on it as
/// far as the work area allows.
[[nodiscard]] QPoint panelPosition(QSize panel, const QRect& icon, const ScreenArea& screen);

/// Every pixel that a rectangle with rounded corners covers wholly or in part.
[[nodiscard]] QRegion roundedRegion(QSize size, int radius);

/// Moves the panel's window to panelPosition() and gives it round corners.
void placePanel(QWindow& panel, const QRect& icon, const ScreenArea& screen);

} // namespace clavo
