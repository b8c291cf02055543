// SPDX-License-Identifier: MIT
#include "keyboard/KeyLayout.h"

#include <gmock/gmock.h>

#include <map>
#include <ostream>
#include <vector>

namespace clavo
{

std::ostream& operator<<(std::ostream& out, const KeyInfo& key)
{
    return out << "slot " << static_cast<int>(key.slot) << ", scancode " << key.scancode << ", pan "
               << key.pan << (key.isCharacter ? ", character" : "");
}

namespace
{

using testing::ElementsAre;
using testing::FloatEq;
using testing::Pair;

KeyInfo at(std::int64_t code)
{
    return KeyLayout::table().at(code);
}

std::vector<float> pans(const std::vector<std::int64_t>& codes)
{
    std::vector<float> found;
    found.reserve(codes.size());
    for (const std::int64_t code : codes)
        found.push_back(at(code).pan);
    return found;
}

TEST(KeyLayout, Has85KeysOf83Scancodes)
{
    std::map<std::int64_t, int> keysPerScancode;
    for (const auto& [code, key] : KeyLayout::table())
        ++keysPerScancode[key.scancode];

    EXPECT_EQ(KeyLayout::table().size(), 85);
    EXPECT_EQ(keysPerScancode.size(), 83);
    EXPECT_EQ(keysPerScancode[41], 2); // Grave and Section
    EXPECT_EQ(keysPerScancode[29], 2); // Function and Control
}

TEST(KeyLayout, EveryFallbackScancodeIsAKeyOfItsSlot)
{
    for (const KeySlot slot : allKeySlots) {
        for (const std::int64_t scancode : fallbackScancodes(slot))
            EXPECT_EQ(KeyLayout::info(scancode).slot, slot) << scancode;
    }
}

TEST(KeyLayout, SpaceIsACharacterJustLeftOfTheCentre)
{
    EXPECT_EQ(at(49), (KeyInfo{KeySlot::space, 57, -0.05F, true}));
}

TEST(KeyLayout, LargeKeysOtherThanSpaceTypeNothing)
{
    EXPECT_EQ(at(36), (KeyInfo{KeySlot::enter, 28, 0.92F, false}));
    EXPECT_EQ(at(76), (KeyInfo{KeySlot::enter, 3612, 1, false}));
    EXPECT_EQ(at(51), (KeyInfo{KeySlot::backspace, 14, 1, false}));
    EXPECT_EQ(at(117), (KeyInfo{KeySlot::backspace, 3667, 1, false}));
}

TEST(KeyLayout, KeysOnTheRightOfTheLettersSharePlaceAndSlot)
{
    const std::map<std::int64_t, std::int64_t> scancodes{
        {54, 3676},  {61, 3640},   {62, 3613},   {115, 3655},  {119, 3663},  {116, 3657},
        {121, 3665}, {126, 57416}, {123, 57419}, {124, 57421}, {125, 57424},
    };

    for (const auto& [code, scancode] : scancodes)
        EXPECT_EQ(at(code), (KeyInfo{KeySlot::row4, scancode, 0.85F, false}));
}

TEST(KeyLayout, FirstKeyOfARowIsNoCharacter)
{
    EXPECT_FALSE(at(50).isCharacter); // Grave
    EXPECT_FALSE(at(48).isCharacter); // Tab
    EXPECT_FALSE(at(57).isCharacter); // Caps Lock
    EXPECT_FALSE(at(56).isCharacter); // Shift

    EXPECT_TRUE(at(18).isCharacter); // 1
    EXPECT_TRUE(at(12).isCharacter); // Q
    EXPECT_TRUE(at(0).isCharacter);  // A
    EXPECT_TRUE(at(10).isCharacter); // Section
}

TEST(KeyLayout, OnlyTheShiftRowEndsWithAKeyThatTypesNothing)
{
    EXPECT_EQ(at(60), (KeyInfo{KeySlot::row4, 54, 1, false})); // Right Shift

    EXPECT_EQ(at(24), (KeyInfo{KeySlot::row1, 13, 1, true})); // Equal
    EXPECT_EQ(at(42), (KeyInfo{KeySlot::row2, 43, 1, true})); // Backslash
    EXPECT_EQ(at(39), (KeyInfo{KeySlot::row3, 40, 1, true})); // Quote
}

TEST(KeyLayout, FunctionRowAndModifiersTypeNothing)
{
    for (const std::int64_t code : {53, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111})
        EXPECT_FALSE(at(code).isCharacter) << code;
    for (const std::int64_t code : {63, 59, 58, 55})
        EXPECT_FALSE(at(code).isCharacter) << code;
}

TEST(KeyLayout, RowsSpreadEvenlyFromTheLeftEdgeToTheRight)
{
    EXPECT_THAT(pans({53, 122, 120, 97, 111}), // Escape, F1, F2, F6, F12
                ElementsAre(-1, FloatEq(2 * (1.0F / 12) - 1), FloatEq(2 * (2.0F / 12) - 1), 0, 1));
    EXPECT_THAT(pans({48, 12, 42}), // Tab, Q, Backslash
                ElementsAre(-1, FloatEq(2 * (1.0F / 13) - 1), 1));
    EXPECT_THAT(pans({57, 0, 39}), // Caps Lock, A, Quote
                ElementsAre(-1, FloatEq(2 * (1.0F / 11) - 1), 1));
    EXPECT_THAT(pans({56, 11, 60}), ElementsAre(-1, 0, 1)); // Shift, B, Right Shift
    EXPECT_THAT(pans({63, 59, 58, 55}),                     // Function, Control, Option, Command
                ElementsAre(-1, FloatEq(2 * (1.0F / 3) - 1), FloatEq(2 * (2.0F / 3) - 1), 1));
}

TEST(KeyLayout, UnknownKeyCodeHasNoEntry)
{
    EXPECT_FALSE(KeyLayout::table().contains(105)); // F13
}

TEST(KeyLayout, ScancodeLeadsToItsKey)
{
    EXPECT_EQ(KeyLayout::info(57), at(49));
    EXPECT_EQ(KeyLayout::info(3612), at(76));
    for (const auto& [code, key] : KeyLayout::table())
        EXPECT_EQ(KeyLayout::info(key.scancode).scancode, key.scancode);
}

TEST(KeyLayout, SharedScancodeLeadsToTheKeyThatComesFirst)
{
    EXPECT_EQ(KeyLayout::info(41), at(50)); // Grave, not Section
    EXPECT_EQ(KeyLayout::info(29), at(63)); // Function, not Control
}

TEST(KeyLayout, UnknownScancodeIsAHomeRowKeyInTheCentre)
{
    EXPECT_EQ(KeyLayout::info(9999), (KeyInfo{KeySlot::row3, 9999, 0, false}));
}

} // namespace
} // namespace clavo
