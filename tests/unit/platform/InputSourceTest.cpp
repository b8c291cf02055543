// SPDX-License-Identifier: MIT
#include "platform/linux/InputSource.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

TEST(InputSource, AnX11SessionIsHeardThroughItsServer)
{
    EXPECT_EQ(inputSource({.type = "x11", .display = ":0"}), InputSource::x11);
    EXPECT_EQ(inputSource({.display = ":0"}), InputSource::x11);
}

TEST(InputSource, AWaylandSessionIsHeardThroughTheKernelThoughItHasAnXServer)
{
    EXPECT_EQ(inputSource({.type = "wayland", .display = ":0"}), InputSource::evdev);
    EXPECT_EQ(inputSource({.waylandDisplay = "wayland-0", .display = ":0"}), InputSource::evdev);
}

TEST(InputSource, AConsoleIsHeardThroughTheKernel)
{
    EXPECT_EQ(inputSource({.type = "tty"}), InputSource::evdev);
    EXPECT_EQ(inputSource({}), InputSource::evdev);
}

TEST(InputSource, TheVariableOverridesTheSession)
{
    EXPECT_EQ(inputSource({.type = "x11", .display = ":0", .input = "evdev"}), InputSource::evdev);
    EXPECT_EQ(inputSource({.type = "wayland", .display = ":0", .input = "x11"}), InputSource::x11);
    EXPECT_EQ(inputSource({.type = "wayland", .input = "loud"}), InputSource::evdev);
}

} // namespace
} // namespace clavo
