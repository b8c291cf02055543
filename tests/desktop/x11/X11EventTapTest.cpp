// SPDX-License-Identifier: MIT
#include "platform/x11/X11EventTap.h"

#include "desktop/x11/X11TapFixture.h"
#include "keyboard/KeyLayout.h"
#include "platform/evdev/EvdevKeys.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <set>
#include <thread>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

using X11EventTapTest = X11TapFixture;

TEST_F(X11EventTapTest, EveryKeyOfTheLayoutArrivesWithItsVirtualCode)
{
    listen();

    std::set<std::int64_t> expected;
    for (std::uint32_t evdevCode = 1; evdevCode + 8 < 256; ++evdevCode) {
        if (const auto code = evdev::virtualKeyCode(evdevCode); KeyLayout::table().contains(code)) {
            expected.insert(code);
            hands.strike(evdevCode);
        }
    }
    settle();

    std::set<std::int64_t> arrived;
    ASSERT_THAT(events, SizeIs(2 * expected.size()));
    for (std::size_t i = 0; i < events.size(); i += 2) {
        EXPECT_EQ(events[i].keyCode, events[i + 1].keyCode);
        arrived.insert(events[i].keyCode);
    }
    EXPECT_EQ(arrived, expected);
    // Fn has no keycode: most keyboards keep it to themselves.
    EXPECT_EQ(expected.size(), KeyLayout::table().size() - 1);
}

TEST_F(X11EventTapTest, AKeyWithoutAVirtualCodeArrivesWithAPrivateOne)
{
    listen();

    hands.strike(KEY_PLAYPAUSE);

    ASSERT_TRUE(untilEvents(2));
    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::keyDown, evdev::privateCodes + KEY_PLAYPAUSE),
                            isKey(RawEventType::keyUp, evdev::privateCodes + KEY_PLAYPAUSE)));
}

TEST_F(X11EventTapTest, EveryModifierArrivesAsFlagsChangedForPressAndRelease)
{
    listen();

    for (const std::uint32_t key : std::initializer_list<std::uint32_t>{
             KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTALT, KEY_RIGHTALT,
             KEY_LEFTMETA, KEY_RIGHTMETA, KEY_CAPSLOCK})
        hands.strike(key);
    settle();

    EXPECT_THAT(events, SizeIs(18));
    EXPECT_THAT(events, Each(Field(&RawEvent::type, RawEventType::flagsChanged)));
}

TEST_F(X11EventTapTest, EventsHaveTheTimesAtWhichTheyHappened)
{
    const auto now = [] { return std::chrono::steady_clock::now().time_since_epoch(); };
    // What the quickest of these takes to arrive is taken for the difference of the clocks.
    auto quickest = 1000ms;
    listen();
    for (int i = 0; i < 20; ++i) {
        const auto before = now();
        hands.strike(KEY_S);
        ASSERT_TRUE(EventLoop::until([&] { return events.size() == 2U * (i + 1); }));
        quickest = std::min(quickest, std::chrono::ceil<std::chrono::milliseconds>(now() - before));
    }
    settle();
    events.clear();

    const auto begin = now();
    hands.strike(KEY_A);
    hands.click(1);
    hands.click(4);
    const auto end = now();
    while (now() < end + 2 * quickest + 50ms) // While the program sleeps.
        std::this_thread::sleep_for(10ms);

    ASSERT_TRUE(untilEvents(5));
    for (const auto& event : events) {
        ASSERT_TRUE(event.time);
        EXPECT_GE(*event.time, begin - 2ms);
        EXPECT_LE(*event.time, end + quickest + 2ms);
    }
}

TEST_F(X11EventTapTest, AHeldKeyDoesNotRepeat)
{
    listen();
    hands.openWindow();

    hands.press(KEY_A);
    ASSERT_TRUE(EventLoop::until([this] { return hands.pressesInWindow() >= 4; }));
    hands.release(KEY_A);
    settle();

    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0)));
}

TEST_F(X11EventTapTest, APressOfAKeyThatIsDownIsARepeat)
{
    listen();

    hands.press(KEY_A);
    hands.press(KEY_A);
    hands.release(KEY_A);
    settle();

    ASSERT_THAT(events, SizeIs(3));
    EXPECT_FALSE(events[0].isAutoRepeat);
    EXPECT_TRUE(events[1].isAutoRepeat);
    EXPECT_EQ(events[2].type, RawEventType::keyUp);
}

TEST_F(X11EventTapTest, TheLeftAndTheRightButtonArriveAndNoOther)
{
    listen();
    hands.movePointer(100);

    hands.click(3);
    ASSERT_TRUE(untilEvents(2));
    for (const int button : {1, 2, 8, 9, 10})
        hands.click(button);
    settle();

    EXPECT_THAT(events, ElementsAre(isAt(RawEventType::rightMouseDown, 100),
                                    isAt(RawEventType::rightMouseUp, 100),
                                    isAt(RawEventType::leftMouseDown, 100),
                                    isAt(RawEventType::leftMouseUp, 100)));
}

TEST_F(X11EventTapTest, EachDetentOfAWheelIsOneEventInEveryDirection)
{
    listen();
    hands.movePointer(640);

    for (const int button : {4, 5, 6, 7})
        hands.click(button);
    settle();

    EXPECT_THAT(events, SizeIs(4));
    EXPECT_THAT(events, Each(isAt(RawEventType::scrollWheel, 640)));
}

TEST_F(X11EventTapTest, AClickCarriesThePointersPlace)
{
    listen();

    for (const int x : {0, 777, 1599}) {
        hands.movePointer(x);
        hands.pressButton(1);
        ASSERT_TRUE(EventLoop::until([&] { return !events.empty() && events.back().x == x; }));
        hands.releaseButton(1);
        settle();
    }

    EXPECT_THAT(events, SizeIs(6));
}

TEST_F(X11EventTapTest, EventsArriveWhileAnotherClientHoldsTheKeyboardAndThePointer)
{
    listen();
    Hands other(server.display());
    ASSERT_TRUE(other.grab());
    hands.movePointer(50);

    hands.strike(KEY_A);
    hands.click(1);
    ASSERT_TRUE(untilEvents(4));

    EXPECT_THAT(events, ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0),
                                    isAt(RawEventType::leftMouseDown, 50),
                                    isAt(RawEventType::leftMouseUp, 50)));
}

TEST_F(X11EventTapTest, AGrabbedServerHoldsUpClicksButNoKeys)
{
    listen();
    hands.movePointer(50);
    hands.grabServer();

    hands.pressButton(1);
    hands.strike(KEY_A);
    ASSERT_TRUE(untilEvents(2)); // A tap that waited for the pointer's place would hang here.
    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0)));

    hands.ungrabServer();
    ASSERT_TRUE(untilEvents(3));
    EXPECT_THAT(events.back(), isAt(RawEventType::leftMouseDown, 50));
}

TEST_F(X11EventTapTest, ABurstOfTwoThousandEventsArrivesWhole)
{
    listen();

    hands.strikeInABurst(KEY_A, 1000);
    ASSERT_TRUE(untilEvents(2000));
    settle();

    ASSERT_THAT(events, SizeIs(2000));
    for (std::size_t i = 0; i < events.size(); i += 2) {
        ASSERT_THAT(events[i], isKey(RawEventType::keyDown, 0));
        ASSERT_THAT(events[i + 1], isKey(RawEventType::keyUp, 0));
    }
}

TEST_F(X11EventTapTest, ABurstOfClicksAndKeysArrivesWhole)
{
    listen();

    for (int i = 0; i < 200; ++i) {
        hands.click(4);
        hands.strike(KEY_A);
        hands.click(1);
    }
    settle();

    EXPECT_THAT(events, SizeIs(1000));
}

TEST_F(X11EventTapTest, MotionAloneIsNotReported)
{
    listen();

    for (int x = 0; x < 50; ++x)
        hands.movePointer(x);
    settle();

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(X11EventTapTest, TheNextMotionIsNotedOnceForEachTimeOfAsking)
{
    listen();
    int moved = 0;
    for (int asked = 1; asked <= 3; ++asked) {
        tap->notifyNextMotion([&] { ++moved; });
        int x = 100 * asked;
        ASSERT_TRUE(EventLoop::until([&] {
            hands.movePointer(x++);
            return moved == asked;
        }));
        hands.movePointer(900);
        settle();
        EXPECT_EQ(moved, asked);
    }
}

TEST_F(X11EventTapTest, AMotionAskedForBeforeTheTapIsCreatedIsNoted)
{
    int moved = 0;
    tap->notifyNextMotion([&] { ++moved; });
    listen();

    hands.movePointer(100);
    settle();

    EXPECT_EQ(moved, 1);
}

TEST_F(X11EventTapTest, MotionIsNotedWithoutInterruptingKeysAndClicks)
{
    listen();
    int moved = 0;
    tap->notifyNextMotion([&] { ++moved; });

    hands.strike(KEY_A);
    int x = 100;
    ASSERT_TRUE(EventLoop::until([&] {
        hands.movePointer(x++);
        return moved == 1;
    }));
    hands.strike(KEY_S);
    settle();

    EXPECT_THAT(events, SizeIs(4));
}

TEST_F(X11EventTapTest, NothingIsDeliveredWhileCreateRuns)
{
    bool isCreated = false;
    bool wasEarly = false;
    hands.strikeInABurst(KEY_A, 100);
    ASSERT_TRUE(tap->create(everything, [&](const RawEvent& event) {
        wasEarly = wasEarly || !isCreated;
        events.push_back(event);
    }));
    hands.strikeInABurst(KEY_S, 100);
    isCreated = true;

    ASSERT_TRUE(untilEvents(200));
    EXPECT_FALSE(wasEarly);
}

TEST_F(X11EventTapTest, AnEmptyDisplayIsTheSessionsOne)
{
    const auto ofSession = makeX11EventTap();
    Hands handsOfSession(qgetenv("DISPLAY").toStdString());
    ASSERT_TRUE(
        ofSession->create(everything, [this](const RawEvent& event) { events.push_back(event); }));

    handsOfSession.strike(KEY_A);

    EXPECT_TRUE(untilEvents(2));
}

TEST(X11EventTapWithoutAServer, IsNotCreated)
{
    EventLoop loop;
    const auto tap = makeX11EventTap(":999");

    EXPECT_FALSE(tap->create(0x401C1E, [](const RawEvent&) {}));
    tap->enable();
    tap->notifyNextMotion([] {});
}

class X11TwoScreensTest : public X11TapFixture
{
protected:
    X11TwoScreensTest()
        : X11TapFixture({"-screen", "0", "800x600x24", "-screen", "1", "800x600x24"})
    {
    }
};

TEST_F(X11TwoScreensTest, EachEventOfADesktopOfTwoRootWindowsArrivesOnce)
{
    listen();

    hands.strike(KEY_A);
    settle();

    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0)));
}

} // namespace
} // namespace clavo
