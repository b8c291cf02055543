// SPDX-License-Identifier: MIT
#include "ui/RoundedRegion.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

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
