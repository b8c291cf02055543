// SPDX-License-Identifier: MIT
#include "ui/PanelPlacement.h"

#include "ui/RoundedRegion.h"

#include <QScreen>
#include <QVariant>
#include <QWindow>

#include <algorithm>

namespace clavo
{
namespace
{

enum class Edge { top, bottom, left, right };

/// The edge of the screen whose panel holds the icon.
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

/// The position nearest to the wished one at which the length lies inside the range, or begins with
/// it where it is too long.
int inside(int wished, int length, int first, int last)
{
    return std::max(first, std::min(wished, last - length + 1));
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

void placePanel(QWindow& panel, const QRect& icon, const ScreenArea& screen)
{
    panel.setPosition(panelPosition(panel.size(), icon, screen));
    panel.setMask(roundedRegion(panel.size(), panel.property("radius").toInt()));
}

} // namespace clavo
