// SPDX-License-Identifier: MIT
#include "ui/PanelPlacement.h"

#include <QScreen>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace clavo
{
namespace
{

enum class Edge { top, bottom, left, right };

/// The edge of the screen with the desktop panel that holds the icon.
Edge edgeOf(const QPoint& icon, const ScreenArea& screen)
{
    if (icon.y() < screen.work.top())
        return Edge::top;
    if (icon.y() > screen.work.bottom())
        return Edge::bottom;
    if (icon.x() < screen.work.left())
        return Edge::left;
    if (icon.x() > screen.work.right())
        return Edge::right;
    return icon.y() < screen.whole.center().y() ? Edge::top : Edge::bottom;
}

/// The position nearest to the preferred one at which the length fits into the range; the start of
/// the range if the length is too long.
int inside(int preferred, int length, int first, int last)
{
    return std::max(first, std::min(preferred, last - length + 1));
}

} // namespace

ScreenArea areaOf(const QScreen& screen)
{
    return {.whole = screen.geometry(), .work = screen.availableGeometry()};
}

int largestPanelHeight(const ScreenArea& screen)
{
    return screen.work.height() - 2 * panelGap;
}

QPoint panelPosition(QSize panel, const QRect& icon, const ScreenArea& screen)
{
    const auto centre = icon.topLeft() + QPoint(icon.width() / 2, icon.height() / 2);
    auto x = centre.x() - panel.width() / 2;
    auto y = centre.y() - panel.height() / 2;
    switch (edgeOf(centre, screen)) {
    case Edge::top:
        y = icon.top() + icon.height() + panelGap;
        break;
    case Edge::bottom:
        y = icon.top() - panelGap - panel.height();
        break;
    case Edge::left:
        x = icon.left() + icon.width() + panelGap;
        break;
    case Edge::right:
        x = icon.left() - panelGap - panel.width();
        break;
    }
    const auto room = screen.work.marginsRemoved({panelGap, panelGap, panelGap, panelGap});
    return {inside(x, panel.width(), room.left(), room.right()),
            inside(y, panel.height(), room.top(), room.bottom())};
}

QRegion roundedRegion(QSize size, int radius)
{
    QRegion region(0, radius, size.width(), size.height() - 2 * radius);
    for (int y = 0; y < radius; ++y) {
        const int rise = radius - y - 1; // From the corner's centre to the row's inner edge.
        const auto reach = std::sqrt(radius * radius - rise * rise);
        const int inset = radius - static_cast<int>(std::ceil(reach));
        const QRect row(inset, y, size.width() - 2 * inset, 1);
        region += row;
        region += row.translated(0, size.height() - 1 - 2 * y);
    }
    return region;
}

void placePanel(QWindow& panel, const QRect& icon, const ScreenArea& screen)
{
    panel.setPosition(panelPosition(panel.size(), icon, screen));
    panel.setMask(roundedRegion(panel.size(), panel.property("radius").toInt()));
}

} // namespace clavo
