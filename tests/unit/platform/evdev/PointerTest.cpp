// SPDX-License-Identifier: MIT
#include "platform/evdev/Mouse.h"

#include <gtest/gtest.h>

#include <vector>

namespace clavo::evdev
{
namespace
{

const std::vector<ScreenExtent> two = {{.x = 0, .width = 1440}, {.x = -1920, .width = 1920}};

TEST(Pointer, BeginsInTheMiddleOfTheScreens)
{
    Pointer pointer;

    EXPECT_EQ(pointer.x(two), -240);
}

TEST(Pointer, MovesAndStopsAtTheEdges)
{
    Pointer pointer;
    pointer.move(100, two);
    EXPECT_EQ(pointer.x(two), -140);

    pointer.move(1e9, two);
    EXPECT_EQ(pointer.x(two), 1440);
    pointer.move(-1, two);
    EXPECT_EQ(pointer.x(two), 1439);
    pointer.move(-1e9, two);
    EXPECT_EQ(pointer.x(two), -1920);
}

TEST(Pointer, IsPutWhereATabletSays)
{
    Pointer pointer;

    pointer.place(0.25, two);
    EXPECT_EQ(pointer.x(two), -1080);
    pointer.place(7, two);
    EXPECT_EQ(pointer.x(two), 1440);
}

TEST(Pointer, ComesBackToTheScreensWhenOneGoes)
{
    Pointer pointer;
    pointer.place(0, two);

    EXPECT_EQ(pointer.x(std::span(two).first(1)), 0);
}

TEST(Pointer, WithoutScreensItIsNowhereUntilThereAreSome)
{
    Pointer pointer;
    pointer.move(100, {});

    EXPECT_EQ(pointer.x({}), 0);
    EXPECT_EQ(pointer.x(two), -240);
}

} // namespace
} // namespace clavo::evdev
