// SPDX-License-Identifier: MIT
#include "ui/PanelPlacement.h"

#include <gtest/gtest.h>

#include <ostream>

/// Found by gtest, which would print the bytes otherwise.
void PrintTo(const QPoint& point, std::ostream* out) // NOLINT(readability-identifier-naming)
{
    *out << point.x() << ", " << point.y();
}

namespace clavo
{
namespace
{

constexpr QSize panel(330, 600);

ScreenArea screenWith(QMargins bars)
{
    constexpr QRect whole(0, 0, 1600, 1200);
    return {.whole = whole, .work = whole.marginsRemoved(bars)};
}

TEST(PanelPlacement, HangsBelowAnIconOfABarAtTheTop)
{
    const QRect icon(800, 2, 24, 24);

    EXPECT_EQ(panelPosition(panel, icon, screenWith({0, 28, 0, 0})), QPoint(812 - 165, 34));
}

TEST(PanelPlacement, StandsOnAnIconOfABarAtTheBottom)
{
    const QRect icon(800, 1162, 36, 36);

    EXPECT_EQ(panelPosition(panel, icon, screenWith({0, 0, 0, 40})),
              QPoint(818 - 165, 1160 - 6 - 600));
}

TEST(PanelPlacement, StandsBesideAnIconOfABarAtASide)
{
    EXPECT_EQ(panelPosition(panel, {8, 700, 24, 24}, screenWith({40, 0, 0, 0})),
              QPoint(40 + 6, 712 - 300));
    EXPECT_EQ(panelPosition(panel, {1568, 700, 24, 24}, screenWith({0, 0, 40, 0})),
              QPoint(1560 - 6 - 330, 712 - 300));
}

TEST(PanelPlacement, StaysInsideTheWorkAreaNearACorner)
{
    const QRect icon(1570, 2, 24, 24);

    EXPECT_EQ(panelPosition(panel, icon, screenWith({0, 28, 0, 0})), QPoint(1600 - 6 - 330, 34));
}

TEST(PanelPlacement, KeepsClearOfTheBarThatWasClicked)
{
    const QRect click(QPoint(900, 1190), QSize());

    EXPECT_EQ(panelPosition(panel, click, screenWith({0, 0, 0, 40})),
              QPoint(900 - 165, 1160 - 6 - 600));
}

TEST(PanelPlacement, ABarThatTakesNoRoomIsAtTheNearerOfTopAndBottom)
{
    EXPECT_EQ(panelPosition(panel, {800, 4, 24, 24}, screenWith({})), QPoint(812 - 165, 34));
    EXPECT_EQ(panelPosition(panel, {800, 1172, 24, 24}, screenWith({})),
              QPoint(812 - 165, 1172 - 6 - 600));
}

TEST(PanelPlacement, StaysOnAScreenThatBeginsElsewhere)
{
    const ScreenArea second{.whole = {1600, 200, 1280, 1024}, .work = {1600, 228, 1280, 996}};

    EXPECT_EQ(panelPosition(panel, {1604, 202, 24, 24}, second), QPoint(1606, 234));
}

TEST(PanelPlacement, APanelTooHighForTheScreenShowsItsTop)
{
    const ScreenArea low{.whole = {0, 0, 910, 512}, .work = {0, 0, 910, 480}};

    EXPECT_EQ(panelPosition(panel, {800, 486, 20, 20}, low).y(), 6);
    EXPECT_EQ(largestPanelHeight(low), 468);
}

TEST(RoundedRegion, LeavesOutOnlyWhatTheCornersDoNotTouch)
{
    const auto region = roundedRegion({20, 16}, 4);

    EXPECT_EQ(region.boundingRect(), QRect(0, 0, 20, 16));
    // The circle's row nearest to the edge reaches 2.6 pixels to each side of its centre.
    for (const int y : {0, 15}) {
        EXPECT_FALSE(region.contains(QPoint(0, y)));
        EXPECT_TRUE(region.contains(QPoint(1, y)));
        EXPECT_TRUE(region.contains(QPoint(18, y)));
        EXPECT_FALSE(region.contains(QPoint(19, y)));
    }
    EXPECT_TRUE(region.contains(QPoint(0, 1)));
    EXPECT_TRUE(region.contains(QPoint(19, 14)));
}

TEST(RoundedRegion, IsTheRectangleWithoutARadius)
{
    EXPECT_EQ(roundedRegion({20, 16}, 0), QRegion(0, 0, 20, 16));
}

} // namespace
} // namespace clavo
