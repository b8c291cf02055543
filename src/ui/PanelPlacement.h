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
    QRect work; // Excludes the desktop's own panels.
};

[[nodiscard]] ScreenArea areaOf(const QScreen& screen);

/// The panel's distance from the icon and from the edges of the work area.
inline constexpr int panelGap = 6;

/// The greatest height of a panel on the screen.
[[nodiscard]] int largestPanelHeight(const ScreenArea& screen);

/// The top left corner of a panel that opens from the icon, or from a click, which is an empty
/// rectangle. The panel is on the icon's side towards the middle of the screen, and centred on the
/// icon as far as the work area allows.
[[nodiscard]] QPoint panelPosition(QSize panel, const QRect& icon, const ScreenArea& screen);

/// Every pixel that a rectangle with rounded corners covers completely or partly.
[[nodiscard]] QRegion roundedRegion(QSize size, int radius);

/// Moves the panel's window to panelPosition() and cuts its corners round.
void placePanel(QWindow& panel, const QRect& icon, const ScreenArea& screen);

} // namespace clavo
