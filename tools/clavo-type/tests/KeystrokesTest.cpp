// SPDX-License-Identifier: MIT
#include "clavo-type/Keystrokes.h"
#include "keyboard/KeyLayout.h"

#include <gmock/gmock.h>

#include <string>

namespace clavo
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

auto key(std::int64_t code)
{
    return AllOf(Field(&Keystroke::code, code), Field(&Keystroke::isShifted, false));
}

auto shifted(std::int64_t code)
{
    return AllOf(Field(&Keystroke::code, code), Field(&Keystroke::isShifted, true));
}

TEST(Keystrokes, AreTheKeysOfAUsKeyboard)
{
    EXPECT_THAT(keystrokesOf("aZ 1!\t'\"\\").strokes,
                ElementsAre(key(0), shifted(6), key(49), key(18), shifted(18), key(48), key(39),
                            shifted(39), key(42)));
}

TEST(Keystrokes, TypeEveryPrintableCharacterOfAscii)
{
    for (char character = ' '; character <= '~'; ++character) {
        const auto [strokes, skipped] = keystrokesOf(std::string(1, character));
        ASSERT_EQ(strokes.size(), 1U) << character;
        EXPECT_EQ(strokes.front().character, character);
        EXPECT_TRUE(KeyLayout::table().contains(strokes.front().code)) << character;
        EXPECT_EQ(skipped, 0U);
    }
}

TEST(Keystrokes, EndLinesOfAnyKindWithOneReturn)
{
    EXPECT_THAT(keystrokesOf("a\nb\r\nc\rd").strokes,
                ElementsAre(key(0), key(36), key(11), key(36), key(8), key(36), key(2)));
}

TEST(Keystrokes, CountACharacterWithoutAKeyOnce)
{
    const auto [strokes, skipped] = keystrokesOf("né → 😀!");

    EXPECT_THAT(strokes, ElementsAre(key(45), key(49), key(49), shifted(18)));
    EXPECT_EQ(skipped, 3U);
}

TEST(Keystrokes, CountWhatIsNoTextByteByByte)
{
    const auto [strokes, skipped] = keystrokesOf({"a\xff\xc3z\x80\0\xf0\x9f", 8});

    EXPECT_THAT(strokes, ElementsAre(key(0), key(6)));
    EXPECT_EQ(skipped, 6U);
}

TEST(Keystrokes, OfNoTextAreNone)
{
    EXPECT_THAT(keystrokesOf("").strokes, IsEmpty());
}

TEST(Keystrokes, KnowTheHand)
{
    const auto [strokes, skipped] = keystrokesOf("g h");

    EXPECT_TRUE(isLeftHand(strokes[0]));
    EXPECT_TRUE(isThumb(strokes[1]));
    EXPECT_FALSE(isLeftHand(strokes[2]));
}

} // namespace
} // namespace clavo
