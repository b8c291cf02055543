// SPDX-License-Identifier: MIT
#include "platform/evdev/Mouse.h"

#include <gtest/gtest.h>

#include <limits>

namespace clavo::evdev
{
namespace
{

TEST(Wheel, ADetentOfACoarseWheelCounts)
{
    const Wheel wheel(false);

    EXPECT_EQ(wheel.turnedDetents(1), 1);
    EXPECT_EQ(wheel.turnedDetents(-1), 1);
    EXPECT_EQ(wheel.turnedDetents(3), 3);
    EXPECT_EQ(wheel.turnedDetents(0), 0);
}

TEST(Wheel, AFineWheelCountsItsStepsAlone)
{
    Wheel wheel(true);

    EXPECT_EQ(wheel.turnedDetents(1), 0);
    EXPECT_EQ(wheel.turnedSteps(120), 1);
    EXPECT_EQ(wheel.turnedSteps(-240), 2);
}

TEST(Wheel, StepsAddUpToADetent)
{
    Wheel wheel(true);

    EXPECT_EQ(wheel.turnedSteps(50), 0);
    EXPECT_EQ(wheel.turnedSteps(50), 0);
    EXPECT_EQ(wheel.turnedSteps(50), 1);
    EXPECT_EQ(wheel.turnedSteps(90), 1) << "thirty were left";
}

TEST(Wheel, TurningBackForgetsTheDetentThatWasBegun)
{
    Wheel wheel(true);

    EXPECT_EQ(wheel.turnedSteps(100), 0);
    EXPECT_EQ(wheel.turnedSteps(-100), 0);
    EXPECT_EQ(wheel.turnedSteps(-20), 1);
}

TEST(Wheel, AnAbsurdReportIsTenDetents)
{
    Wheel coarse(false);
    Wheel fine(true);

    EXPECT_EQ(coarse.turnedDetents(std::numeric_limits<int>::min()), 10);
    EXPECT_EQ(fine.turnedSteps(std::numeric_limits<int>::max()), 10);
    EXPECT_EQ(fine.turnedSteps(std::numeric_limits<int>::min()), 10);
}

} // namespace
} // namespace clavo::evdev
