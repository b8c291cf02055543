// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevKeys.h"

#include "keyboard/KeyLayout.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <map>
#include <set>
#include <vector>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// Every virtual key code with the kernel's keys that have it.
std::map<std::int64_t, std::vector<std::uint32_t>> keysByVirtualCode()
{
    std::map<std::int64_t, std::vector<std::uint32_t>> keys;
    for (std::uint32_t evdevCode = 0; evdevCode < KEY_CNT; ++evdevCode) {
        const auto code = evdev::virtualKeyCode(evdevCode);
        if (code < evdev::privateCodes)
            keys[code].push_back(evdevCode);
    }
    return keys;
}

TEST(EvdevKeyCodes, EveryKeyOfTheLayoutCanBeReached)
{
    const auto keys = keysByVirtualCode();
    std::vector<std::int64_t> unreachable;
    for (const auto& [code, info] : KeyLayout::table()) {
        if (!keys.contains(code))
            unreachable.push_back(code);
    }

    EXPECT_EQ(KeyLayout::table().size(), 85U);
    EXPECT_THAT(unreachable, IsEmpty());
}

TEST(EvdevKeyCodes, NoTwoKeysShareACodeButHelpAndInsert)
{
    std::vector<std::vector<std::uint32_t>> shared;
    for (const auto& [code, keys] : keysByVirtualCode()) {
        if (keys.size() > 1)
            shared.push_back(keys);
    }

    EXPECT_THAT(shared, ElementsAre(ElementsAre(KEY_INSERT, KEY_HELP)));
}

TEST(EvdevKeyCodes, PrivateCodesAreDistinctAndNoVirtualOnes)
{
    std::set<std::int64_t> privateCodes;
    std::size_t count = 0;
    for (std::uint32_t evdevCode = 0; evdevCode < 2 * KEY_CNT; ++evdevCode) {
        const auto code = evdev::virtualKeyCode(evdevCode);
        if (code > 127) {
            privateCodes.insert(code);
            ++count;
            EXPECT_FALSE(KeyLayout::table().contains(code));
        }
    }

    EXPECT_EQ(privateCodes.size(), count);
    EXPECT_THAT(privateCodes, Contains(evdev::privateCodes + KEY_PLAYPAUSE));
}

TEST(EvdevKeyCodes, KeysMapByName)
{
    EXPECT_EQ(evdev::virtualKeyCode(KEY_A), 0);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_Q), 12);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_102ND), 10);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_LEFTALT), 58);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_LEFTMETA), 55);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_RIGHTALT), 61);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_RIGHTMETA), 54);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_DELETE), 117);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_BACKSPACE), 51);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_KPENTER), 76);
    EXPECT_EQ(evdev::virtualKeyCode(KEY_FN), 63);
}

TEST(EvdevKeyCodes, TheKeysOfTheTypewriterRowsHaveTheScancodesOfAPcKeyboard)
{
    // Packs count PC set 1, and so does the kernel as far as F10.
    for (std::uint32_t evdevCode = KEY_ESC; evdevCode <= KEY_F10; ++evdevCode) {
        if (evdevCode == KEY_KPASTERISK)
            continue;
        const auto info = KeyLayout::table().find(evdev::virtualKeyCode(evdevCode));
        ASSERT_NE(info, KeyLayout::table().end()) << evdevCode;
        EXPECT_EQ(info->second.scancode, evdevCode);
    }
}

TEST(EvdevKeyCodes, OnlyShiftControlAltMetaCapsLockAndFnAreModifiers)
{
    std::vector<std::uint32_t> modifiers;
    for (std::uint32_t evdevCode = 0; evdevCode < 2 * KEY_CNT; ++evdevCode) {
        if (evdev::isModifier(evdevCode))
            modifiers.push_back(evdevCode);
    }

    EXPECT_THAT(modifiers,
                ElementsAre(KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTALT, KEY_CAPSLOCK,
                            KEY_RIGHTCTRL, KEY_RIGHTALT, KEY_LEFTMETA, KEY_RIGHTMETA, KEY_FN));
}

} // namespace
} // namespace clavo
