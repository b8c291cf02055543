// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevKeys.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace clavo::evdev
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::Eq;
using testing::Field;
using testing::IsEmpty;
using testing::Optional;

auto isEvent(std::uint32_t type, std::int64_t code, bool isAutoRepeat = false)
{
    return AllOf(Field("type", &RawEvent::type, type), Field("keyCode", &RawEvent::keyCode, code),
                 Field("isAutoRepeat", &RawEvent::isAutoRepeat, isAutoRepeat));
}

TEST(HeldKeys, AKeyGoesDownAndUp)
{
    HeldKeys keys;

    EXPECT_THAT(keys.press(KEY_S), Optional(isEvent(RawEventType::keyDown, 1)));
    EXPECT_THAT(keys.release(KEY_S), Optional(isEvent(RawEventType::keyUp, 1)));
    EXPECT_THAT(keys.press(KEY_S), Optional(isEvent(RawEventType::keyDown, 1)));
}

TEST(HeldKeys, AKeyThatIsDownRepeats)
{
    HeldKeys keys;
    (void)keys.press(KEY_S);

    EXPECT_THAT(keys.press(KEY_S), Optional(isEvent(RawEventType::keyDown, 1, true)));
    EXPECT_THAT(keys.press(KEY_A), Optional(isEvent(RawEventType::keyDown, 0)));
}

TEST(HeldKeys, AKeyPressedUnseenIsReleased)
{
    HeldKeys keys;

    EXPECT_THAT(keys.release(KEY_ENTER), Optional(isEvent(RawEventType::keyUp, 36)));
}

TEST(HeldKeys, AModifierChangesFlagsBothWays)
{
    HeldKeys keys;

    EXPECT_THAT(keys.press(KEY_LEFTSHIFT), Optional(isEvent(RawEventType::flagsChanged, 56)));
    EXPECT_THAT(keys.release(KEY_LEFTSHIFT), Optional(isEvent(RawEventType::flagsChanged, 56)));
}

TEST(HeldKeys, AModifierThatIsDownDoesNotRepeat)
{
    HeldKeys keys;
    (void)keys.press(KEY_LEFTSHIFT);

    EXPECT_THAT(keys.press(KEY_LEFTSHIFT), Eq(std::nullopt));
}

TEST(HeldKeys, AModifierPressedUnseenIsNotReleased)
{
    HeldKeys keys;

    EXPECT_THAT(keys.release(KEY_LEFTSHIFT), Eq(std::nullopt));
}

TEST(HeldKeys, ReleasingAllReportsTheModifiersAndForgetsEveryKey)
{
    HeldKeys keys;
    (void)keys.press(KEY_S);
    (void)keys.press(KEY_LEFTSHIFT);
    (void)keys.press(KEY_LEFTCTRL);
    (void)keys.release(KEY_LEFTCTRL);

    EXPECT_THAT(keys.releaseAll(), ElementsAre(isEvent(RawEventType::flagsChanged, 56)));
    EXPECT_THAT(keys.releaseAll(), IsEmpty());
    EXPECT_THAT(keys.press(KEY_S), Optional(isEvent(RawEventType::keyDown, 1)));
    EXPECT_THAT(keys.press(KEY_LEFTSHIFT), Optional(isEvent(RawEventType::flagsChanged, 56)));
}

TEST(HeldKeys, NumbersBeyondTheKernelsAreIgnored)
{
    HeldKeys keys;

    EXPECT_THAT(keys.press(KEY_CNT), Eq(std::nullopt));
    EXPECT_THAT(keys.release(0U - 8), Eq(std::nullopt));
}

} // namespace
} // namespace clavo::evdev
