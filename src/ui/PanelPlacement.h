// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
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

/// The largest height that a panel has room for on the screen.
[[nodiscard]] int largestPanelHeight(const ScreenArea& screen);

/// The top left corner of the panel that belongs to the icon, or to a click, which is a place
/// without extent: beside the icon, on its side towards the middle of the screen, centred on it as
/// far as the work area allows.
[[nodiscard]] QPoint panelPosition(QSize panel, const QRect& icon, const ScreenArea& screen);

/// Moves the panel's window there, and cuts off what is outside of its round corners.
void placePanel(QWindow& panel, const QRect& icon, const ScreenArea& screen);

} // namespace clavo
