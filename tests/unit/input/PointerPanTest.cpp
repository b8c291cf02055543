// SPDX-License-Identifier: MIT
#include "unit/input/InputMonitorFixture.h"

#include <limits>

namespace clavo
{
namespace
{

using Mouse = InputMonitor::Mouse;
using Scroll = InputMonitor::Scroll;
using testing::ElementsAre;

class PointerPan : public InputMonitorFixture
{
protected:
    /// The pan of a click at the place.
    float panOfClickAt(double x)
    {
        events.clear();
        pointer(RawEventType::leftMouseDown, x);
        return std::get<InputMonitor::Mouse>(events.at(0)).pan;
    }
};

TEST_F(PointerPan, FollowsThePointerAcrossOneScreen)
{
    listen();

    EXPECT_EQ(panOfClickAt(0), -1);
    EXPECT_EQ(panOfClickAt(720), 0);
    EXPECT_EQ(panOfClickAt(1440), 1);
}

TEST_F(PointerPan, SpansAllScreens)
{
    screens.screens = {{.x = 0, .width = 1440}, {.x = -1920, .width = 1920}};
    listen();

    EXPECT_EQ(panOfClickAt(-1920), -1);
    EXPECT_EQ(panOfClickAt(0), 0.142857194F); // Twice the float of 1920/3360, less 1.
    EXPECT_EQ(panOfClickAt(1440), 1);
}

TEST_F(PointerPan, IsNotClamped)
{
    listen();

    EXPECT_EQ(panOfClickAt(-720), -2);
    EXPECT_EQ(panOfClickAt(2880), 3);
}

TEST_F(PointerPan, IsDividedInDoublePrecision)
{
    screens.screens = {{.x = 16777216, .width = 2}};
    listen();

    EXPECT_EQ(panOfClickAt(16777217), 0); // As a float the place would be the left edge.
}

TEST_F(PointerPan, IsDoubledInSinglePrecision)
{
    screens.screens = {{.x = 0, .width = 3}};
    listen();

    // A third as a float is 0x1.555556p-2; doubled less 1 that is exactly −0x1.555554p-2.
    EXPECT_EQ(panOfClickAt(1), -0x1.555554p-2F);
}

TEST_F(PointerPan, UsesTheScreensAsTheyAreAtTheEvent)
{
    listen();
    ASSERT_EQ(panOfClickAt(1440), 1);

    screens.screens.push_back({.x = 1440, .width = 1440});

    EXPECT_EQ(panOfClickAt(1440), 0);
}

TEST_F(PointerPan, WithoutScreensEveryPanIsTheCentre)
{
    screens.screens.clear();
    listen();

    pointer(RawEventType::leftMouseDown, 500);
    pointer(RawEventType::rightMouseUp, 500);
    pointer(RawEventType::scrollWheel, 500);

    EXPECT_THAT(events, ElementsAre(Mouse{true, 0}, Mouse{false, 0}, Scroll{0}));
}

TEST_F(PointerPan, ScreensWithoutAnExtentGiveTheCentre)
{
    screens.screens = {{.x = 0, .width = 0}};
    listen();
    EXPECT_EQ(panOfClickAt(500), 0);

    screens.screens = {{.x = 0, .width = std::numeric_limits<double>::quiet_NaN()}};
    EXPECT_EQ(panOfClickAt(500), 0);
}

} // namespace
} // namespace clavo
