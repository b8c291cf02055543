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

} // namespace
} // namespace clavo
