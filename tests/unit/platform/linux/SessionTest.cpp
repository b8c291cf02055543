// SPDX-License-Identifier: MIT
#include "platform/linux/Session.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

TEST(Session, OfAnXServerIsX11AndHeardThroughTheServer)
{
    for (const SessionEnvironment& environment :
         {SessionEnvironment{.type = "x11", .display = ":0"}, {.display = ":0"}}) {
        const auto session = sessionOf(environment);
        EXPECT_EQ(session.windows, WindowSystem::x11);
        EXPECT_EQ(session.input, InputSource::x11);
    }
}

TEST(Session, OfAWaylandDisplayIsWaylandAndHeardThroughTheKernelThoughItHasAnXServer)
{
    const auto session = sessionOf({.waylandDisplay = "wayland-0", .display = ":0"});
    EXPECT_EQ(session.windows, WindowSystem::wayland);
    EXPECT_EQ(session.input, InputSource::evdev);
}

TEST(Session, OfTypeWaylandWhoseDisplayIsNotKnownHasNoWindowSystem)
{
    const auto session = sessionOf({.type = "wayland", .display = ":0"});
    EXPECT_EQ(session.windows, WindowSystem::none);
    EXPECT_EQ(session.input, InputSource::evdev);
}

TEST(Session, OfAConsoleHasNoWindowSystemAndIsHeardThroughTheKernel)
{
    for (const SessionEnvironment& environment : {SessionEnvironment{.type = "tty"}, {}}) {
        const auto session = sessionOf(environment);
        EXPECT_EQ(session.windows, WindowSystem::none);
        EXPECT_EQ(session.input, InputSource::evdev);
    }
}

TEST(Session, HasTheInputSourceOfTheVariableWhateverItsWindowSystem)
{
    const auto x11 = sessionOf({.type = "x11", .display = ":0", .input = "evdev"});
    EXPECT_EQ(x11.windows, WindowSystem::x11);
    EXPECT_EQ(x11.input, InputSource::evdev);
    EXPECT_EQ(sessionOf({.type = "wayland", .display = ":0", .input = "x11"}).input,
              InputSource::x11);
    EXPECT_EQ(sessionOf({.type = "wayland", .input = "loud"}).input, InputSource::evdev);
}

TEST(Session, IsHeardThroughTheKernelIfTheProgramIsBuiltWithoutX11)
{
    for (const auto* input : {"", "x11"}) {
        const auto session =
            sessionOf({.type = "x11", .display = ":0", .input = input}, {.x11 = false});
        EXPECT_EQ(session.windows, WindowSystem::none);
        EXPECT_EQ(session.input, InputSource::evdev);
    }
}

TEST(Session, HasNoInputSourceIfTheProgramIsBuiltWithoutTheOneItNeeds)
{
    EXPECT_EQ(sessionOf({.waylandDisplay = "wayland-0"}, {.evdev = false}).input,
              InputSource::none);
    EXPECT_EQ(sessionOf({.input = "evdev"}, {.evdev = false}).input, InputSource::none);
    EXPECT_EQ(sessionOf({.display = ":0", .input = "x11"}, {.x11 = false, .evdev = false}).input,
              InputSource::none);
}

TEST(Session, OfX11IsHeardThroughTheServerIfTheProgramIsBuiltWithoutEvdev)
{
    EXPECT_EQ(sessionOf({.display = ":0", .input = "evdev"}, {.evdev = false}).input,
              InputSource::x11);
}

} // namespace
} // namespace clavo
