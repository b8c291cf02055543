// SPDX-License-Identifier: MIT
#include "platform/x11/X11Screens.h"

#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"

#include <gmock/gmock.h>

#include <memory>
#include <ostream>
#include <vector>

namespace clavo
{

inline bool operator==(const ScreenExtent& a, const ScreenExtent& b)
{
    return a.x == b.x && a.width == b.width;
}

inline std::ostream& operator<<(std::ostream& out, const ScreenExtent& extent)
{
    return out << extent.width << " wide at " << extent.x;
}

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class X11ScreensTest : public testing::Test
{
protected:
    /// Runs xrandr on the private server.
    void xrandr(const QStringList& arguments)
    {
        const QStringList display{"-display", QString::fromStdString(server.display())};
        ASSERT_EQ(QProcess::execute("xrandr", display + arguments), 0);
    }

    std::vector<ScreenExtent> extents()
    {
        const auto now = screens->extents();
        return {now.begin(), now.end()};
    }

    EventLoop loop;
    PrivateServer server;
    std::unique_ptr<Screens> screens = makeX11Screens(server.display());
};

TEST_F(X11ScreensTest, OneScreenIsTheWholeDesktop)
{
    EXPECT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));
}

TEST_F(X11ScreensTest, MonitorsThatComeAndGoAreSeenAtTheNextLook)
{
    ASSERT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));

    xrandr({"--setmonitor", "left", "600/150x1200/300+0+0", "screen"});
    xrandr({"--setmonitor", "right", "1000/250x1200/300+600+0", "none"});
    EXPECT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 600},
                                       ScreenExtent{.x = 600, .width = 1000}));

    xrandr({"--delmonitor", "right"});
    xrandr({"--delmonitor", "left"});
    EXPECT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));
}

TEST_F(X11ScreensTest, AResizedDesktopIsSeenAtTheNextLook)
{
    ASSERT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));

    xrandr({"--newmode", "small", "40", "800", "840", "968", "1056", "600", "601", "605", "628"});
    xrandr({"--addmode", "screen", "small"});
    xrandr({"--output", "screen", "--mode", "small"});

    EXPECT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 800}));
}

TEST_F(X11ScreensTest, ALostServerHasNoScreensUntilItIsBack)
{
    ASSERT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));

    server.stop();
    EXPECT_THAT(extents(), IsEmpty());
    EXPECT_THAT(extents(), IsEmpty());

    server.start();
    EXPECT_TRUE(EventLoop::until([this] { return !extents().empty(); }));
    EXPECT_THAT(extents(), ElementsAre(ScreenExtent{.x = 0, .width = 1600}));
}

TEST(X11ScreensWithoutAServer, AreNone)
{
    EXPECT_THAT(makeX11Screens(":999")->extents(), IsEmpty());
}

TEST(X11ScreensWithoutRandr, AreTheWholeDesktop)
{
    EventLoop loop;
    PrivateServer server({"-screen", "0", "1024x768x24", "-extension", "RANDR"});
    const auto screens = makeX11Screens(server.display());

    const auto now = screens->extents();
    ASSERT_EQ(now.size(), 1U);
    EXPECT_EQ(now[0], (ScreenExtent{.x = 0, .width = 1024}));
}

} // namespace
} // namespace clavo
