// SPDX-License-Identifier: MIT
#include "unit/input/InputMonitorFixture.h"

#include <type_traits>

namespace clavo
{
namespace
{

using Event = InputMonitor::Event;
using Key = InputMonitor::Key;
using Mouse = InputMonitor::Mouse;
using Scroll = InputMonitor::Scroll;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

using InputMonitorTest = InputMonitorFixture;

TEST_F(InputMonitorTest, AnEventIsAPlainValue)
{
    EXPECT_TRUE(std::is_trivially_copyable_v<Event>);
    EXPECT_EQ(std::variant_size_v<Event>, 3U);
}

TEST_F(InputMonitorTest, NothingIsInstalledBeforeStart)
{
    EXPECT_FALSE(monitor.isRunning());
    EXPECT_EQ(tap.created, 0);
}

TEST_F(InputMonitorTest, StartInstallsAndEnablesTheTap)
{
    EXPECT_TRUE(monitor.start());

    EXPECT_TRUE(monitor.isRunning());
    EXPECT_EQ(tap.created, 1);
    EXPECT_EQ(tap.enabled, 1);
}

TEST_F(InputMonitorTest, TheTapIsAskedForKeysModifiersTwoButtonsAndTheWheelOnly)
{
    ASSERT_TRUE(monitor.start());

    EXPECT_EQ(tap.mask, 0x401C1EU); // Bits 1 to 4, 10 to 12 and 22.
}

TEST_F(InputMonitorTest, StartingTwiceInstallsOneTap)
{
    ASSERT_TRUE(monitor.start());

    EXPECT_TRUE(monitor.start());
    EXPECT_EQ(tap.created, 1);
    EXPECT_EQ(tap.enabled, 1);
}

TEST_F(InputMonitorTest, ARefusedTapChangesNothing)
{
    tap.refuses = true;

    EXPECT_FALSE(monitor.start());

    EXPECT_FALSE(monitor.isRunning());
    EXPECT_EQ(tap.enabled, 0);
    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(InputMonitorTest, StartMayBeTriedAgainAfterARefusal)
{
    tap.refuses = true;
    ASSERT_FALSE(monitor.start());
    tap.refuses = false;

    EXPECT_TRUE(monitor.start());

    EXPECT_TRUE(monitor.isRunning());
    EXPECT_EQ(tap.created, 2);
}

TEST_F(InputMonitorTest, AKeyIsDeliveredWithItsCodeAndDirection)
{
    listen();

    key(RawEventType::keyDown, 49);
    key(RawEventType::keyUp, 49);

    EXPECT_THAT(events, ElementsAre(Key{49, true}, Key{49, false}));
}

TEST_F(InputMonitorTest, AHeldKeyYieldsOnePressAndOneRelease)
{
    listen();

    key(RawEventType::keyDown, 4);
    tap.deliver({.type = RawEventType::keyDown, .keyCode = 4, .isAutoRepeat = true});
    tap.deliver({.type = RawEventType::keyDown, .keyCode = 4, .isAutoRepeat = true});
    key(RawEventType::keyUp, 4);

    EXPECT_THAT(events, ElementsAre(Key{4, true}, Key{4, false}));
}

TEST_F(InputMonitorTest, AKeyUpIsNotTestedForAutoRepeat)
{
    listen();

    tap.deliver({.type = RawEventType::keyUp, .keyCode = 4, .isAutoRepeat = true});

    EXPECT_THAT(events, ElementsAre(Key{4, false}));
}

TEST_F(InputMonitorTest, AModifierAlternatesPressAndRelease)
{
    listen();

    key(RawEventType::flagsChanged, 56);
    key(RawEventType::flagsChanged, 56);
    key(RawEventType::flagsChanged, 56);

    EXPECT_THAT(events, ElementsAre(Key{56, true}, Key{56, false}, Key{56, true}));
}

TEST_F(InputMonitorTest, ModifiersAlternateEachForItself)
{
    listen();

    key(RawEventType::flagsChanged, 56);
    key(RawEventType::flagsChanged, 60);
    key(RawEventType::flagsChanged, 56);
    key(RawEventType::flagsChanged, 60);

    EXPECT_THAT(events, ElementsAre(Key{56, true}, Key{60, true}, Key{56, false}, Key{60, false}));
}

TEST_F(InputMonitorTest, ModifiersAreTrackedWithoutAReceiver)
{
    ASSERT_TRUE(monitor.start());
    key(RawEventType::flagsChanged, 56);
    receiveEvents();

    key(RawEventType::flagsChanged, 56);

    EXPECT_THAT(events, ElementsAre(Key{56, false}));
}

TEST_F(InputMonitorTest, AModifierPressedDuringSecureInputIsReportedAsPressedWhenReleasedAfterIt)
{
    listen();
    secureInput.on = true;
    key(RawEventType::flagsChanged, 56);
    secureInput.on = false;

    key(RawEventType::flagsChanged, 56);

    EXPECT_THAT(events, ElementsAre(Key{56, true}));
}

TEST_F(InputMonitorTest, BothButtonsAreDeliveredAlike)
{
    listen();

    pointer(RawEventType::leftMouseDown, 1440);
    pointer(RawEventType::leftMouseUp, 1440);
    pointer(RawEventType::rightMouseDown, 0);
    pointer(RawEventType::rightMouseUp, 0);

    EXPECT_THAT(events,
                ElementsAre(Mouse{true, 1}, Mouse{false, 1}, Mouse{true, -1}, Mouse{false, -1}));
}

TEST_F(InputMonitorTest, EveryWheelEventIsDelivered)
{
    listen();

    pointer(RawEventType::scrollWheel, 720);
    pointer(RawEventType::scrollWheel, 1080);

    EXPECT_THAT(events, ElementsAre(Scroll{0}, Scroll{0.5F}));
}

TEST_F(InputMonitorTest, OtherEventsAreDropped)
{
    listen();

    for (const std::uint32_t type : {0U, 5U, 6U, 7U, 14U, 25U, 26U, 27U, 0xFFFFFFFDU})
        tap.receiver({.type = type}); // Not even if a tap ignores the mask.

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(InputMonitorTest, WithoutAReceiverEventsAreDropped)
{
    ASSERT_TRUE(monitor.start());

    key(RawEventType::keyDown, 0);
    pointer(RawEventType::leftMouseDown, 0);
    pointer(RawEventType::scrollWheel, 0);
    receiveEvents();

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(InputMonitorTest, DuringSecureInputNothingIsDelivered)
{
    listen();
    secureInput.on = true;

    key(RawEventType::keyDown, 0);
    key(RawEventType::keyUp, 0);
    key(RawEventType::flagsChanged, 56);
    pointer(RawEventType::leftMouseDown, 0);
    pointer(RawEventType::scrollWheel, 0);

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(InputMonitorTest, TellsWhenTheLastEventCameAlsoOneThatIsSecret)
{
    listen();
    EXPECT_EQ(monitor.lastEvent(), std::nullopt);

    uptime = 12'500ms;
    key(RawEventType::keyDown, 0);
    EXPECT_EQ(monitor.lastEvent(), 12'500ms);

    secureInput.on = true;
    uptime = 13s;
    key(RawEventType::keyDown, 0);
    EXPECT_EQ(monitor.lastEvent(), 13s);
}

TEST_F(InputMonitorTest, KeysThatComeLateAreMarked)
{
    listen();
    uptime = 10s;
    const auto deliver = [this](std::uint32_t type, std::chrono::milliseconds age) {
        tap.deliver({.type = type, .keyCode = 56, .time = uptime - age});
    };

    for (const auto type :
         {RawEventType::keyDown, RawEventType::keyUp, RawEventType::flagsChanged}) {
        deliver(type, 201ms);
        deliver(type, 200ms);
    }
    deliver(RawEventType::keyDown, -1s); // Of a clock that is ahead.

    EXPECT_THAT(events,
                ElementsAre(Key{56, true, true}, Key{56, true}, Key{56, false, true},
                            Key{56, false}, Key{56, true, true}, Key{56, false}, Key{56, true}));
}

TEST_F(InputMonitorTest, ClicksAndTicksThatComeLateAreDropped)
{
    listen();
    uptime = 10s;

    for (const auto type :
         {RawEventType::leftMouseDown, RawEventType::leftMouseUp, RawEventType::rightMouseDown,
          RawEventType::rightMouseUp, RawEventType::scrollWheel})
        tap.deliver({.type = type, .time = uptime - 201ms});
    EXPECT_THAT(events, IsEmpty());

    tap.deliver({.type = RawEventType::leftMouseDown, .time = uptime - 200ms});
    EXPECT_THAT(events, SizeIs(1));
}

TEST_F(InputMonitorTest, SecureInputIsNotedOncePerStretch)
{
    listen();

    secureInput.on = true;
    key(RawEventType::keyDown, 0);
    key(RawEventType::keyUp, 0);
    EXPECT_THAT(logged.entries(),
                ElementsAre(Pair(log::Level::notice, "saisie sécurisée active : sons coupés")));

    secureInput.on = false;
    key(RawEventType::keyDown, 0);
    secureInput.on = true;
    key(RawEventType::keyDown, 0);
    EXPECT_THAT(logged.lines(), SizeIs(2));
}

TEST_F(InputMonitorTest, AStretchOfSecureInputEndsOnlyAtAnEventOutsideIt)
{
    listen();
    secureInput.on = true;
    key(RawEventType::keyDown, 0);

    secureInput.on = false;
    secureInput.on = true;
    key(RawEventType::keyDown, 0);

    EXPECT_THAT(logged.lines(), SizeIs(1));
}

TEST_F(InputMonitorTest, ADisabledTapIsEnabledAgainSilently)
{
    listen();

    tap.disable(RawEventType::tapDisabledByTimeout);
    tap.disable(RawEventType::tapDisabledByUserInput);

    EXPECT_EQ(tap.enabled, 3); // Once at the start.
    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(InputMonitorTest, ADisabledTapIsEnabledAgainDuringSecureInputWithoutANotice)
{
    listen();
    secureInput.on = true;

    tap.disable();

    EXPECT_EQ(tap.enabled, 2);
    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(InputMonitorTest, ATapDisabledNoticeWithoutATapDoesNothing)
{
    tap.refuses = true;
    receiveEvents();
    ASSERT_FALSE(monitor.start());

    tap.receiver({.type = RawEventType::tapDisabledByTimeout});

    EXPECT_EQ(tap.enabled, 0);
    EXPECT_THAT(events, IsEmpty());
}

} // namespace
} // namespace clavo
