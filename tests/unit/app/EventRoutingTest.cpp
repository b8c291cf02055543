// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <numbers>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyEscape = 53; // At the left edge.
constexpr std::int64_t keyUnknown = 105;
constexpr std::int64_t keyShift = 56;

class EventRouting : public AppStateFixture
{
protected:
    EventRouting()
    {
        writePack("cherrymx-red-abs", {{1, 0.5F}, {30, 0.5F}, {42, 0.5F}},
                  {{1, 0.25F}, {30, 0.25F}});
        state().setVolume(1);
    }

    /// What a sound of this level, pan and gain sounds like in its first frame.
    static auto sounds(float level, double pan, float gain)
    {
        const auto angle = (pan + 1) * std::numbers::pi / 4;
        return ElementsAre(FloatNear(level * gain * static_cast<float>(std::cos(angle)), 1e-6F),
                           FloatNear(level * gain * static_cast<float>(std::sin(angle)), 1e-6F));
    }

    [[nodiscard]] std::int64_t played() { return state().sound().nextPlayer(); }
};

TEST_F(EventRouting, PressSoundsInFullFromThreeFifthsOfTheKeysPlace)
{
    press(keyEscape);

    EXPECT_THAT(heard(), sounds(0.5F, -0.6, 1));
}

TEST_F(EventRouting, ReleaseSoundsSofter)
{
    release(keyEscape);

    EXPECT_THAT(heard(), sounds(0.25F, -0.6, 0.8F));
}

TEST_F(EventRouting, ReleaseIsSilentWhenKeyUpSoundsAreOff)
{
    state().setKeyUpSounds(false);

    release(keyEscape);
    EXPECT_EQ(played(), 0);
    press(keyEscape);
    EXPECT_THAT(heard(), sounds(0.5F, -0.6, 1));
}

TEST_F(EventRouting, EverythingSoundsFromTheCentreWithoutSpatialSound)
{
    state().setSpatial(false);
    state().setMouseSounds(true);

    press(keyEscape);
    EXPECT_THAT(heard(), sounds(0.5F, 0, 1));
    click(RawEventType::leftMouseDown, 1440);
    EXPECT_EQ(state().sound().players()[1].pan, 0.0F);
}

TEST_F(EventRouting, NothingSoundsWhenSwitchedOff)
{
    state().setMouseSounds(true);
    state().setScrollSounds(true);
    state().setEnabled(false);

    press(keyA);
    release(keyA);
    click(RawEventType::leftMouseDown, 0);
    click(RawEventType::scrollWheel, 0);

    EXPECT_EQ(played(), 0);
}

TEST_F(EventRouting, UnknownKeySoundsLikeTheHomeRowSlightlyToTheRight)
{
    press(keyUnknown);

    EXPECT_THAT(heard(), sounds(0.5F, 0.36, 1));
}

TEST_F(EventRouting, ModifierSoundsByItsPlaceInTheLayout)
{
    key(RawEventType::flagsChanged, keyShift);

    EXPECT_THAT(heard(), sounds(0.5F, -0.6, 1));
}

TEST_F(EventRouting, HeldKeySoundsOnce)
{
    press(keyA);
    tap->deliver({.type = RawEventType::keyDown, .keyCode = keyA, .isAutoRepeat = true});

    EXPECT_EQ(played(), 1);
}

TEST_F(EventRouting, MouseIsSilentUntilSwitchedOn)
{
    click(RawEventType::leftMouseDown, 0);
    EXPECT_EQ(played(), 0);

    state().setMouseSounds(true);
    click(RawEventType::leftMouseDown, 0);
    click(RawEventType::rightMouseUp, 0);
    EXPECT_EQ(played(), 2);
}

TEST_F(EventRouting, ClickSoundsFromThePointersPlace)
{
    state().setMouseSounds(true);

    click(RawEventType::leftMouseDown, 1440);

    EXPECT_FLOAT_EQ(state().sound().players()[0].pan, 0.6F);
    EXPECT_FLOAT_EQ(state().sound().players()[0].gain, 0.7F);
}

TEST_F(EventRouting, WheelIsSilentUntilSwitchedOn)
{
    click(RawEventType::scrollWheel, 0);
    EXPECT_EQ(played(), 0);

    state().setScrollSounds(true);
    click(RawEventType::scrollWheel, 0);
    EXPECT_FLOAT_EQ(state().sound().players()[0].pan, -0.6F);
    EXPECT_FLOAT_EQ(state().sound().players()[0].gain, 0.35F);
}

TEST_F(EventRouting, ScrollingTicksTwentyTimesASecond)
{
    state().setScrollSounds(true);

    for (int event = 0; event < 100; ++event) {
        click(RawEventType::scrollWheel, 0);
        time.advance(10ms);
    }

    EXPECT_EQ(played(), 20);
}

TEST_F(EventRouting, TickNeedsMoreThanTheIntervalSinceTheLast)
{
    state().setScrollSounds(true);
    click(RawEventType::scrollWheel, 0);

    time.advance(44ms);
    click(RawEventType::scrollWheel, 0);
    EXPECT_EQ(played(), 1);
    time.advance(2ms);
    click(RawEventType::scrollWheel, 0);
    EXPECT_EQ(played(), 2);
}

TEST_F(EventRouting, PressesAreCountedAndReleasesAreNot)
{
    press(keyA);
    release(keyA);
    press(keyA);

    EXPECT_EQ(state().stats()->total(), 2);
}

TEST_F(EventRouting, PressesAreCountedWithTheSoundsOff)
{
    state().setEnabled(false);

    press(keyA);
    click(RawEventType::leftMouseDown, 0);
    click(RawEventType::scrollWheel, 0);

    EXPECT_EQ(state().stats()->today(), 1);
    EXPECT_EQ(played(), 0);
}

TEST_F(EventRouting, OnlyKeysWithACharacterCountTowardsTheSpeed)
{
    for (int key = 0; key < 5; ++key) {
        press(keyUnknown);
        press(keyEscape);
    }
    EXPECT_EQ(state().stats()->currentWPM(), 0);
    EXPECT_EQ(state().stats()->total(), 10);

    for (int key = 0; key < 5; ++key)
        press(keyA);
    EXPECT_EQ(state().stats()->currentWPM(), 1);
}

TEST_F(EventRouting, AModifiersPressIsCountedAndItsReleaseIsNot)
{
    key(RawEventType::flagsChanged, keyShift);
    key(RawEventType::flagsChanged, keyShift);

    EXPECT_EQ(state().stats()->total(), 1);
}

TEST_F(EventRouting, TheDebugLineNamesTheDirectionAndNeverTheKey)
{
    log::setThreshold(log::Level::debug);
    logged.clear();
    state().setKeyUpSounds(false);

    press(keyA);
    release(keyA);

    EXPECT_THAT(logged.lines(),
                ElementsAre("touche appuyée, son: true", "touche relâchée, son: false"));
}

TEST_F(EventRouting, KeysLeaveNoLineUnlessDebugging)
{
    logged.clear();

    press(keyA);

    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(EventRouting, KeysThatComeLateAreCountedAndSilent)
{
    time.advance(1s);
    const auto pressAt = [this](std::chrono::nanoseconds uptime) {
        tap->deliver({.type = RawEventType::keyDown, .keyCode = keyA, .time = uptime});
    };
    const auto now = platform.bootedFor + time.now();

    for (int press = 0; press < 10; ++press)
        pressAt(now - 201ms);
    EXPECT_EQ(state().stats()->total(), 10);
    EXPECT_EQ(played(), 0);

    pressAt(now - 200ms);
    EXPECT_EQ(played(), 1);
}

TEST_F(EventRouting, PointerMotionWakesAPausedOutput)
{
    press(keyA);
    letRingOut();
    time.advance(2 * SoundEngine::idleTime);
    ASSERT_FALSE(audio->isRunning());

    tap->movePointer();

    EXPECT_TRUE(audio->isRunning());
}

TEST_F(EventRouting, PointerMotionLeavesAPausedOutputAloneWhenSwitchedOff)
{
    state().setEnabled(false);
    time.advance(2 * SoundEngine::idleTime);
    ASSERT_FALSE(audio->isRunning());

    tap->movePointer();
    EXPECT_FALSE(audio->isRunning());
    state().setEnabled(true);
    EXPECT_TRUE(audio->isRunning());
}

} // namespace
} // namespace clavo
