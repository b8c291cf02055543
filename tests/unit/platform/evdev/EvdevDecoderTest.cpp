// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevDecoder.h"

#include "fakes/FakeScreens.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <array>
#include <limits>
#include <vector>

namespace clavo::evdev
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint16_t shift = KEY_LEFTSHIFT;
constexpr EvdevDecoder::Device first = 1;
constexpr EvdevDecoder::Device second = 2;

auto isKey(std::uint32_t type, std::int64_t code, bool isAutoRepeat = false)
{
    return AllOf(Field("type", &RawEvent::type, type), Field("keyCode", &RawEvent::keyCode, code),
                 Field("isAutoRepeat", &RawEvent::isAutoRepeat, isAutoRepeat));
}

auto isAt(std::uint32_t type, double x)
{
    return AllOf(Field("type", &RawEvent::type, type), Field("x", &RawEvent::x, x));
}

class EvdevDecoderTest : public testing::Test
{
protected:
    EvdevDecoderTest()
    {
        decoder.add(first, {.hasTypingKeys = true, .hasKeys = true}, {});
        decoder.add(second, {.hasTypingKeys = true, .hasKeys = true}, {});
    }

    std::vector<RawEvent> key(EvdevDecoder::Device device, std::uint16_t code, int value)
    {
        return decode(device, EV_KEY, code, value);
    }
    std::vector<RawEvent> decode(EvdevDecoder::Device device, std::uint16_t type,
                                 std::uint16_t code, int value)
    {
        const auto decoded =
            decoder.decode(device, {.type = type, .code = code, .value = value}, desktop);
        return {decoded.begin(), decoded.end()};
    }

    FakeScreens desktop;
    std::vector<ScreenExtent>& screens = desktop.screens = {{.x = 0, .width = 1000}};
    EvdevDecoder decoder;
};

TEST_F(EvdevDecoderTest, AKeyGoesDownRepeatsAndComesUp)
{
    EXPECT_THAT(key(first, KEY_S, 1), ElementsAre(isKey(RawEventType::keyDown, 1)));
    EXPECT_THAT(key(first, KEY_S, 2), ElementsAre(isKey(RawEventType::keyDown, 1, true)));
    EXPECT_THAT(key(first, KEY_S, 0), ElementsAre(isKey(RawEventType::keyUp, 1)));
}

TEST_F(EvdevDecoderTest, TheSameKeyOfTwoKeyboardsIsPressedTwice)
{
    EXPECT_THAT(key(first, KEY_S, 1), ElementsAre(isKey(RawEventType::keyDown, 1)));
    EXPECT_THAT(key(second, KEY_S, 1), ElementsAre(isKey(RawEventType::keyDown, 1)));
}

TEST_F(EvdevDecoderTest, RawEventsHaveTheTimeOfTheKernels)
{
    using namespace std::chrono_literals;
    decoder.add(3, {.hasButtons = true, .hasWheel = true}, {});
    const auto timeOf = [this](EvdevDecoder::Device device, DeviceEvent event) {
        event.time = 12'345ms;
        const auto decoded = decoder.decode(device, event, desktop);
        return decoded.empty() ? std::nullopt : decoded.back().time;
    };

    EXPECT_EQ(timeOf(first, {.type = EV_KEY, .code = KEY_S, .value = 1}), 12'345ms);
    EXPECT_EQ(timeOf(first, {.type = EV_KEY, .code = shift, .value = 1}), 12'345ms);
    EXPECT_EQ(timeOf(3, {.type = EV_KEY, .code = BTN_LEFT, .value = 1}), 12'345ms);
    EXPECT_EQ(timeOf(3, {.type = EV_REL, .code = REL_WHEEL, .value = 1}), 12'345ms);
    EXPECT_THAT(key(second, KEY_S, 1), ElementsAre(Field(&RawEvent::time, std::nullopt)));
}

TEST_F(EvdevDecoderTest, AModifierOfTwoKeyboardsGoesDownWithTheFirstAndUpWithTheLast)
{
    EXPECT_THAT(key(first, shift, 1), ElementsAre(isKey(RawEventType::flagsChanged, 56)));
    EXPECT_THAT(key(second, shift, 1), IsEmpty());
    EXPECT_THAT(key(first, shift, 0), IsEmpty());
    EXPECT_THAT(key(second, shift, 0), ElementsAre(isKey(RawEventType::flagsChanged, 56)));
}

TEST_F(EvdevDecoderTest, AModifierThatRepeatsIsNotHeard)
{
    EXPECT_THAT(key(first, shift, 1), SizeIs(1));
    EXPECT_THAT(key(first, shift, 2), IsEmpty());
}

TEST_F(EvdevDecoderTest, AKeyboardThatGoesReleasesItsModifiers)
{
    (void)key(first, KEY_S, 1);
    (void)key(first, shift, 1);
    (void)key(first, KEY_LEFTCTRL, 1);
    (void)key(second, KEY_LEFTCTRL, 1);

    EXPECT_THAT(decoder.remove(first), ElementsAre(isKey(RawEventType::flagsChanged, 56)))
        << "the other keyboard holds Control";
    EXPECT_THAT(key(second, KEY_LEFTCTRL, 0), SizeIs(1));
    EXPECT_THAT(key(first, KEY_S, 0), IsEmpty()) << "it is gone";
}

TEST_F(EvdevDecoderTest, WhatWasLostShowsInTheModifiersAlone)
{
    (void)key(first, KEY_S, 1);
    (void)key(first, shift, 1);
    const std::array<std::uint16_t, 3> down = {KEY_A, KEY_LEFTCTRL, BTN_LEFT};

    EXPECT_THAT(
        decoder.resynchronize(first, down),
        ElementsAre(isKey(RawEventType::flagsChanged, 59), isKey(RawEventType::flagsChanged, 56)));

    EXPECT_THAT(key(first, KEY_A, 2), ElementsAre(isKey(RawEventType::keyDown, 0, true)));
    EXPECT_THAT(key(first, KEY_S, 1), ElementsAre(isKey(RawEventType::keyDown, 1)));
    EXPECT_THAT(key(first, KEY_LEFTCTRL, 0), SizeIs(1));
    EXPECT_THAT(key(first, shift, 0), IsEmpty());
}

TEST_F(EvdevDecoderTest, WhatIsHeldWhenTheKeyboardComesWasNotPressed)
{
    const std::array<std::uint16_t, 2> down = {KEY_S, shift};
    decoder.add(3, {.hasKeys = true}, down);

    EXPECT_THAT(key(3, KEY_S, 2), ElementsAre(isKey(RawEventType::keyDown, 1, true)));
    EXPECT_THAT(key(3, shift, 0), IsEmpty());
    EXPECT_THAT(key(3, shift, 1), SizeIs(1));
}

TEST_F(EvdevDecoderTest, TheLeftAndTheRightButtonClickWhereThePointerIs)
{
    EXPECT_THAT(key(first, BTN_LEFT, 1), ElementsAre(isAt(RawEventType::leftMouseDown, 500)));
    (void)decode(first, EV_REL, REL_X, -200);
    EXPECT_THAT(key(second, BTN_RIGHT, 1), ElementsAre(isAt(RawEventType::rightMouseDown, 300)));
    EXPECT_THAT(key(second, BTN_RIGHT, 0), ElementsAre(isAt(RawEventType::rightMouseUp, 300)));
    EXPECT_THAT(key(first, BTN_LEFT, 0), ElementsAre(isAt(RawEventType::leftMouseUp, 300)));
}

TEST_F(EvdevDecoderTest, OtherButtonsAreNotHeard)
{
    constexpr std::array<std::uint16_t, 7> codes = {BTN_MIDDLE,     BTN_SIDE,    BTN_TOUCH,
                                                    BTN_SOUTH,      BTN_DPAD_UP, BTN_TRIGGER_HAPPY,
                                                    BTN_TOOL_FINGER};
    for (const auto code : codes)
        EXPECT_THAT(key(first, code, 1), IsEmpty()) << code;
}

TEST_F(EvdevDecoderTest, KeysNumberedBeyondTheButtonsAreHeard)
{
    EXPECT_THAT(key(first, KEY_FN, 1), ElementsAre(isKey(RawEventType::flagsChanged, 63)));
    EXPECT_THAT(key(first, KEY_OK, 1), SizeIs(1));
}

TEST_F(EvdevDecoderTest, EachDetentOfAWheelIsOneTick)
{
    EXPECT_THAT(decode(first, EV_REL, REL_WHEEL, -2), SizeIs(2));
    EXPECT_THAT(decode(first, EV_REL, REL_HWHEEL, 1),
                ElementsAre(isAt(RawEventType::scrollWheel, 500)));
}

TEST_F(EvdevDecoderTest, AFineWheelIsCountedOnce)
{
    decoder.add(3, {.hasWheel = true, .hasFineWheel = true}, {});

    EXPECT_THAT(decode(3, EV_REL, REL_WHEEL_HI_RES, 60), IsEmpty());
    EXPECT_THAT(decode(3, EV_REL, REL_WHEEL_HI_RES, 60), SizeIs(1));
    EXPECT_THAT(decode(3, EV_REL, REL_WHEEL, 1), IsEmpty());
    EXPECT_THAT(decode(3, EV_REL, REL_HWHEEL, 1), SizeIs(1)) << "that one has no fine steps";
}

TEST_F(EvdevDecoderTest, ATabletPutsThePointerWhereItSays)
{
    decoder.add(3, {.absoluteX = DeviceTraits::Range{.least = 0, .greatest = 32767}}, {});
    decoder.add(4, {.absoluteX = DeviceTraits::Range{.least = 5, .greatest = 5}}, {});

    (void)decode(3, EV_ABS, ABS_X, 32767);
    EXPECT_THAT(key(3, BTN_LEFT, 1), ElementsAre(isAt(RawEventType::leftMouseDown, 1000)));
    (void)decode(4, EV_ABS, ABS_X, 5);
    (void)decode(first, EV_ABS, ABS_X, 5);
    EXPECT_THAT(key(3, BTN_LEFT, 0), ElementsAre(isAt(RawEventType::leftMouseUp, 1000)));
}

TEST_F(EvdevDecoderTest, NoNumberIsTooMuch)
{
    constexpr auto most = std::numeric_limits<std::uint16_t>::max();
    for (const int value : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_THAT(decode(first, EV_KEY, most, value), IsEmpty());
        EXPECT_THAT(decode(first, EV_REL, REL_X, value), IsEmpty());
        EXPECT_THAT(decode(first, EV_REL, REL_WHEEL, value), SizeIs(10));
        EXPECT_THAT(decode(first, most, most, value), IsEmpty());
    }
    EXPECT_THAT(key(99, KEY_S, 1), IsEmpty()) << "there is no such device";
}

TEST_F(EvdevDecoderTest, MotionIsDistinguished)
{
    EXPECT_TRUE(EvdevDecoder::isMotion({.type = EV_REL, .code = REL_Y, .value = 1}));
    EXPECT_TRUE(EvdevDecoder::isMotion({.type = EV_ABS, .code = ABS_X, .value = 1}));
    EXPECT_FALSE(EvdevDecoder::isMotion({.type = EV_REL, .code = REL_WHEEL, .value = 1}));
    EXPECT_FALSE(EvdevDecoder::isMotion({.type = EV_KEY, .code = KEY_A, .value = 1}));
}

} // namespace
} // namespace clavo::evdev
