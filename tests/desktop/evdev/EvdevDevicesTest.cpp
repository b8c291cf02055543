// SPDX-License-Identifier: MIT
#include "contracts/EventTapContract.h"
#include "desktop/evdev/EvdevTapRig.h"
#include "fakes/CollectedLog.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace
{

bool hasFreeInotify = true;

} // namespace

/// The call of the system, which the tap reaches under this name.
extern "C" int inotify_init1(int flags) noexcept
{
    if (!hasFreeInotify) {
        errno = EMFILE;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_inotify_init1, flags));
}

namespace clavo
{
namespace
{

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::int64_t capsLock = 57;

RawEvent keyDown(std::int64_t code)
{
    return {.type = RawEventType::keyDown, .keyCode = code};
}

RawEvent keyUp(std::int64_t code)
{
    return {.type = RawEventType::keyUp, .keyCode = code};
}

/// This thread without the rights by which root reads every file; anybody else never had them.
class WithoutRootsRights
{
public:
    WithoutRootsRights()
    {
        EXPECT_EQ(::syscall(SYS_capget, &m_header, m_rights.data()), 0);
        auto less = m_rights;
        less.front().effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        EXPECT_EQ(::syscall(SYS_capset, &m_header, less.data()), 0);
    }
    ~WithoutRootsRights() { ::syscall(SYS_capset, &m_header, m_rights.data()); }
    WithoutRootsRights(const WithoutRootsRights&) = delete;
    WithoutRootsRights& operator=(const WithoutRootsRights&) = delete;

private:
    __user_cap_header_struct m_header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> m_rights{};
};

/// The tap and devices that come, go and fall behind.
class EvdevDevicesTest : public EventTapContract<EvdevTapRig>
{
protected:
    KernelDevice& keyboard() { return *rig.keyboard; }
    KernelDevice& mouse() { return *rig.mouse; }
    EventTap& tap() { return rig.tap(); }

    /// Strikes a key that nothing else in the test strikes, and takes what came before it.
    std::vector<RawEvent> settled()
    {
        keyboard().strike(KEY_SPACE);
        EXPECT_TRUE(rig.until([this] { return !events.empty() && events.back() == keyUp(49); }));
        return {events.begin(), events.end() - std::min<std::ptrdiff_t>(2, std::ssize(events))};
    }
};

TEST_F(EvdevDevicesTest, AKeyboardPluggedInLaterIsHeard)
{
    ASSERT_TRUE(listen());

    auto& second = rig.devices.plugIn(keyboardKind());

    EXPECT_TRUE(rig.until([&] {
        second.strike(KEY_A);
        return !events.empty();
    }));
    EXPECT_EQ(events.front(), keyDown(letterA));
}

/// The user's instances of inotify are used up by other programs.
class EvdevDevicesWithoutInotify : public EvdevDevicesTest
{
protected:
    EvdevDevicesWithoutInotify() { hasFreeInotify = false; }
    ~EvdevDevicesWithoutInotify() override { hasFreeInotify = true; }

    CollectedLog logged;
};

TEST_F(EvdevDevicesWithoutInotify, ThoseThatAreThereAreHeardAndTheCauseIsLoggedOnce)
{
    ASSERT_TRUE(listen());

    strike(letterA);
    EXPECT_TRUE(untilEvents(2));

    mouse().unplug(); // The watch is tried again.
    strike(letterS);
    EXPECT_TRUE(untilEvents(4));
    EXPECT_THAT(logged.lines(),
                ElementsAre("inotify refusé (Too many open files) : un périphérique "
                            "branché plus tard ne sera pas entendu"));
}

TEST_F(EvdevDevicesWithoutInotify, AKeyboardThatReturnsIsHeardOnceThereIsAFreeInstance)
{
    ASSERT_TRUE(listen());
    hasFreeInotify = true;

    rig.lose();
    ASSERT_TRUE(untilEvents(1)); // The loss.
    tap().enable();
    rig.restore();

    EXPECT_TRUE(rig.until([&] {
        strike(letterA);
        return events.size() > 1;
    }));
}

TEST_F(EvdevDevicesTest, OneOfTwoKeyboardsMayGo)
{
    auto& second = rig.devices.plugIn(keyboardKind());
    ASSERT_TRUE(listen());

    second.unplug();

    keyboard().strike(KEY_A);
    ASSERT_TRUE(untilEvents(2));
    EXPECT_THAT(settled(), ElementsAre(keyDown(letterA), keyUp(letterA)));
}

TEST_F(EvdevDevicesTest, AModifierHeldOnAKeyboardThatGoesComesUp)
{
    auto& second = rig.devices.plugIn(keyboardKind());
    ASSERT_TRUE(listen());
    second.key(KEY_LEFTSHIFT, true);
    second.key(KEY_A, true);
    ASSERT_TRUE(untilEvents(2));

    second.unplug();

    ASSERT_TRUE(untilEvents(3));
    EXPECT_EQ(events.back(), (RawEvent{.type = RawEventType::flagsChanged, .keyCode = shift}));
}

TEST_F(EvdevDevicesTest, TheRightToReadADeviceMayComeLate)
{
    const WithoutRootsRights asAnybody;
    ASSERT_TRUE(listen());
    auto& second = rig.devices.plugIn(keyboardKind());
    second.setReadable(false);
    auto& third = rig.devices.plugIn(keyboardKind());
    ASSERT_TRUE(rig.until([&] { // And so the second has been tried.
        third.strike(KEY_S);
        return !events.empty();
    }));
    ASSERT_EQ(events.front(), keyDown(letterS));

    second.setReadable(true);

    EXPECT_TRUE(rig.until([&] {
        second.strike(KEY_A);
        return events.back() == keyUp(letterA);
    }));
}

TEST_F(EvdevDevicesTest, LostEventsDisableTheTapUntilItIsEnabled)
{
    ASSERT_TRUE(listen());

    keyboard().lose({{.type = EV_KEY, .code = KEY_A, .value = 1}});
    ASSERT_TRUE(untilEvents(1));
    EXPECT_THAT(events, ElementsAre(RawEvent{.type = RawEventType::tapDisabledByTimeout}));
    keyboard().strike(KEY_S);
    rig.tap().enable();

    ASSERT_TRUE(rig.until([this] {
        keyboard().strike(KEY_SPACE);
        return events.size() > 1;
    }));
}

TEST_F(EvdevDevicesTest, AModifierPressedAmongLostEventsIsDownAfterwards)
{
    ASSERT_TRUE(listen());

    keyboard().lose({{.type = EV_KEY, .code = KEY_LEFTSHIFT, .value = 1},
                     {.type = EV_KEY, .code = KEY_A, .value = 1}});
    ASSERT_TRUE(untilEvents(1));
    rig.tap().enable();

    ASSERT_TRUE(untilEvents(2));
    EXPECT_EQ(events[1], (RawEvent{.type = RawEventType::flagsChanged, .keyCode = shift}));
    keyboard().key(KEY_A, false); // Its press was never heard; its release is.
    EXPECT_THAT(settled(), SizeIs(3));
    EXPECT_EQ(events[2], keyUp(letterA));
}

TEST_F(EvdevDevicesTest, AReleaseAmongLostEventsLetsTheKeyBePressedAgain)
{
    ASSERT_TRUE(listen());
    keyboard().key(KEY_A, true);
    ASSERT_TRUE(untilEvents(1));

    keyboard().lose({{.type = EV_KEY, .code = KEY_A, .value = 0}});
    ASSERT_TRUE(untilEvents(2));
    rig.tap().enable();
    QCoreApplication::processEvents();
    ASSERT_TRUE(rig.until([this] {
        keyboard().key(KEY_A, true);
        keyboard().key(KEY_A, false);
        return events.size() > 2;
    }));

    EXPECT_EQ(events[2], keyDown(letterA)); // And no repeat.
}

TEST_F(EvdevDevicesTest, EventsHaveTheTimesAtWhichTheyHappened)
{
    const auto now = [] { return std::chrono::steady_clock::now().time_since_epoch(); };
    ASSERT_TRUE(listen());

    const auto begin = now();
    keyboard().strike(KEY_A);
    rig.click(true, 10);
    rig.wheel(10);
    const auto end = now();

    ASSERT_TRUE(untilEvents(4));
    for (const auto& event : events) {
        ASSERT_TRUE(event.time);
        EXPECT_GE(*event.time, begin - std::chrono::microseconds(1)); // Rounded down by the kernel.
        EXPECT_LE(*event.time, end);
    }
}

TEST_F(EvdevDevicesTest, TheKernelsRepeatsAreMarked)
{
    ASSERT_TRUE(listen());

    keyboard().key(KEY_A, true);
    keyboard().send({{.type = EV_KEY, .code = KEY_A, .value = 2}});
    keyboard().key(KEY_A, false);

    ASSERT_TRUE(untilEvents(3));
    auto repeat = keyDown(letterA);
    repeat.isAutoRepeat = true;
    EXPECT_THAT(events, ElementsAre(keyDown(letterA), repeat, keyUp(letterA)));
}

TEST_F(EvdevDevicesTest, AHeldModifierDoesNotRepeat)
{
    ASSERT_TRUE(listen());

    keyboard().key(KEY_CAPSLOCK, true);
    keyboard().send({{.type = EV_KEY, .code = KEY_CAPSLOCK, .value = 2}});
    keyboard().key(KEY_CAPSLOCK, false);

    ASSERT_TRUE(untilEvents(2));
    EXPECT_THAT(settled(), AllOf(SizeIs(2), Each(RawEvent{.type = RawEventType::flagsChanged,
                                                          .keyCode = capsLock})));
}

TEST_F(EvdevDevicesTest, AFineWheelTicksOncePerDetent)
{
    auto& fine = rig.devices.plugIn(fineWheelMouseKind());
    ASSERT_TRUE(listen());

    for (int part = 0; part < 8; ++part)
        fine.send({{.type = EV_REL, .code = REL_WHEEL_HI_RES, .value = 30}});
    fine.send({{.type = EV_REL, .code = REL_WHEEL_HI_RES, .value = 120},
               {.type = EV_REL, .code = REL_WHEEL, .value = 1}});

    ASSERT_TRUE(untilEvents(3));
    EXPECT_THAT(settled(),
                AllOf(SizeIs(3), Each(testing::Field(&RawEvent::type, RawEventType::scrollWheel))));
}

TEST_F(EvdevDevicesTest, AnUnusedPositionIsNotTracked)
{
    ASSERT_TRUE(listen());
    rig.movePointer(100);

    rig.tap().setPositionUsed(false);
    rig.movePointer(500);
    mouse().key(BTN_LEFT, true);
    mouse().send({{.type = EV_REL, .code = REL_WHEEL, .value = 1}});
    ASSERT_TRUE(untilEvents(2));
    rig.tap().setPositionUsed(true);
    rig.movePointer(500);
    mouse().key(BTN_LEFT, false);

    ASSERT_TRUE(untilEvents(3));
    EXPECT_THAT(events, ElementsAre(RawEvent{.type = RawEventType::leftMouseDown, .x = 100},
                                    RawEvent{.type = RawEventType::scrollWheel, .x = 100},
                                    RawEvent{.type = RawEventType::leftMouseUp, .x = 500}));
}

TEST_F(EvdevDevicesTest, TheNextMotionIsReportedWhileThePositionIsUnused)
{
    ASSERT_TRUE(listen());
    rig.tap().setPositionUsed(false);
    int moved = 0;
    rig.tap().notifyNextMotion([&] { ++moved; });

    rig.movePointer(100);

    EXPECT_TRUE(rig.until([&] { return moved > 0; }));
    rig.movePointer(500);
    EXPECT_THAT(settled(), testing::IsEmpty());
    EXPECT_EQ(moved, 1);
}

TEST_F(EvdevDevicesTest, ATabletSaysWhereThePointerIs)
{
    auto& tablet = rig.devices.plugIn(tabletKind());
    ASSERT_TRUE(listen());

    tablet.send({{.type = EV_ABS, .code = ABS_X, .value = 500}});
    tablet.key(BTN_LEFT, true);

    ASSERT_TRUE(untilEvents(1));
    EXPECT_EQ(events[0], (RawEvent{.type = RawEventType::leftMouseDown, .x = 720}));
}

TEST_F(EvdevDevicesTest, AKeyThatIsDownAlreadyIsNotPressedAgain)
{
    keyboard().key(KEY_A, true);
    ASSERT_TRUE(listen());

    keyboard().key(KEY_A, false);

    ASSERT_TRUE(untilEvents(1));
    // An event from before the device was opened may still arrive, as a repeat.
    EXPECT_EQ(settled().back(), keyUp(letterA));
    for (const auto& event : events)
        EXPECT_TRUE(event.keyCode != letterA || event.type == RawEventType::keyUp ||
                    event.isAutoRepeat);
}

TEST_F(EvdevDevicesTest, ABurstArrivesWhole)
{
    ASSERT_TRUE(listen());

    std::size_t told = 0;
    for (; told < 1000; told += 20) {
        for (int stroke = 0; stroke < 10; ++stroke)
            keyboard().strike(KEY_A);
        ASSERT_TRUE(untilEvents(told + 20)); // The line is shorter than the kernel's own queue.
    }

    EXPECT_THAT(settled(), SizeIs(told));
}

} // namespace
} // namespace clavo
