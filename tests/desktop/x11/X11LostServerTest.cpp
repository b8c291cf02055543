// SPDX-License-Identifier: MIT
#include "desktop/x11/X11TapFixture.h"
#include "fakes/CollectedLog.h"

#include <linux/input-event-codes.h>

#include <csignal>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::Lt;
using testing::SizeIs;

class X11LostServerTest : public X11TapFixture
{
protected:
    X11LostServerTest()
    {
        signal(SIGPIPE, SIG_DFL); // Starting a process through Qt ignores it.
    }

    /// Loses the server with a tap that enables itself, as the monitor does.
    void loseServer()
    {
        ASSERT_TRUE(tap->create(everything, [this](const RawEvent& event) {
            events.push_back(event);
            if (event.type == RawEventType::tapDisabledByTimeout)
                tap->enable();
        }));
        server.stop();
        ASSERT_TRUE(untilEvents(1));
    }

    CollectedLog logged;

    /// Strikes a key until it is heard.
    [[nodiscard]] bool isHeardAgain()
    {
        Hands newHands(server.display());
        const auto before = events.size();
        return EventLoop::until([&] {
            newHands.strike(KEY_A);
            return events.size() > before;
        });
    }
};

TEST_F(X11LostServerTest, ALostServerIsReportedOnceAndHeardAgainWhenItIsBack)
{
    loseServer();

    server.start();
    ASSERT_TRUE(isHeardAgain());

    EXPECT_EQ(events.front().type, RawEventType::tapDisabledByTimeout);
    events.erase(events.begin());
    EXPECT_THAT(events, Each(Field(&RawEvent::type, Lt(RawEventType::tapDisabledByTimeout))));
    EXPECT_THAT(logged.lines(), SizeIs(1));
}

TEST_F(X11LostServerTest, AServerMayBeLostTwice)
{
    loseServer();
    server.start();
    ASSERT_TRUE(isHeardAgain());
    events.clear();

    server.stop();
    ASSERT_TRUE(EventLoop::until([&] { return logged.lines().size() == 2; }));
    server.start();

    EXPECT_TRUE(isHeardAgain());
}

TEST_F(X11LostServerTest, AMotionAskedForIsNotedByTheNewServer)
{
    int moved = 0;
    tap->notifyNextMotion([&] { ++moved; });
    loseServer();
    server.start();
    ASSERT_TRUE(isHeardAgain());

    Hands newHands(server.display());
    newHands.movePointer(300);

    EXPECT_TRUE(EventLoop::until([&] { return moved == 1; }));
}

TEST_F(X11LostServerTest, AskingForAMotionOfALostServerIsHarmless)
{
    listen();
    server.stop();

    tap->notifyNextMotion([] {}); // Writes to a connection that is broken and not yet known to be.

    ASSERT_TRUE(untilEvents(1));
    EXPECT_EQ(events[0].type, RawEventType::tapDisabledByTimeout);
}

TEST_F(X11LostServerTest, AHeldModifierIsReleasedWithTheServer)
{
    listen();
    hands.press(KEY_LEFTSHIFT);
    hands.press(KEY_A);

    server.stop();
    ASSERT_TRUE(untilEvents(4));

    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::flagsChanged, 56), isKey(RawEventType::keyDown, 0),
                            isKey(RawEventType::flagsChanged, 56),
                            Field(&RawEvent::type, RawEventType::tapDisabledByTimeout)));
}

TEST_F(X11LostServerTest, ATapThatIsNotEnabledAgainStaysLost)
{
    listen();
    server.stop();
    ASSERT_TRUE(untilEvents(1));
    server.start();
    Hands newHands(server.display());

    int strikes = 0;
    ASSERT_TRUE(EventLoop::until([&] {
        newHands.strike(KEY_A);
        return ++strikes == 100;
    }));

    EXPECT_THAT(events, SizeIs(1));
}

} // namespace
} // namespace clavo
