// SPDX-License-Identifier: MIT
#include "ui/DailyChart.h"

#include <gtest/gtest.h>

#include <limits>

namespace clavo
{
namespace
{

TEST(ChartScale, IsTheLeastThatTheGreatestValueFitsIn)
{
    EXPECT_EQ(chartScale(1), (ChartScale{.step = 1, .steps = 1}));
    EXPECT_EQ(chartScale(4), (ChartScale{.step = 1, .steps = 4}));
    EXPECT_EQ(chartScale(5), (ChartScale{.step = 2, .steps = 3}));
    EXPECT_EQ(chartScale(8), (ChartScale{.step = 2, .steps = 4}));
    EXPECT_EQ(chartScale(9), (ChartScale{.step = 5, .steps = 2}));
    EXPECT_EQ(chartScale(21), (ChartScale{.step = 10, .steps = 3}));
    EXPECT_EQ(chartScale(9'001), (ChartScale{.step = 5'000, .steps = 2}));
    EXPECT_EQ(chartScale(1'234'567), (ChartScale{.step = 500'000, .steps = 3}));
}

TEST(ChartScale, HasARoomOfItsOwnWhereThereIsNothing)
{
    EXPECT_EQ(chartScale(0), (ChartScale{.step = 1, .steps = 1}));
    EXPECT_EQ(chartScale(-7), (ChartScale{.step = 1, .steps = 1}));
}

TEST(ChartScale, ExistsForTheGreatestNumber)
{
    EXPECT_GT(chartScale(std::numeric_limits<std::int64_t>::max()).top(), 0);
}

} // namespace
} // namespace clavo
