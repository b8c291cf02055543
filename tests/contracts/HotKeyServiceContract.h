// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace clavo
{

/// What every HotKeyService promises. A Rig is a desktop with one service and hands at its
/// keyboard:
///
///     HotKeyService& service();
///     void strike(std::uint32_t keyCode, std::uint32_t modifiers);   a letter, down and up
///     template <typename Condition> bool until(Condition)   lets time pass until it holds; false
///     if it never does
template <typename Rig> class HotKeyServiceContract : public testing::Test
{
protected:
    static constexpr std::uint32_t letterJ = 38;
    static constexpr std::uint32_t letterK = 40;
    static constexpr std::uint32_t chord = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;

    [[nodiscard]] std::optional<HotKeyRef> add(std::uint32_t keyCode, int& presses)
    {
        return rig.service().registerHotKey({.keyCode = keyCode, .modifiers = chord},
                                            [&presses] { ++presses; });
    }

    /// Strikes until it is heard: a service may need a moment to take a shortcut. No strike is left
    /// unheard.
    [[nodiscard]] bool isHeard(std::uint32_t keyCode, const int& presses)
    {
        return rig.until([&, before = presses] {
            if (presses == before)
                rig.strike(keyCode, chord);
            return presses > before;
        });
    }

    /// Waits for all that has been struck so far, by striking once a shortcut that has been heard
    /// before.
    [[nodiscard]] bool settle(std::uint32_t keyCode, const int& presses)
    {
        const auto before = presses;
        rig.strike(keyCode, chord);
        return rig.until([&] { return presses > before; });
    }

    Rig rig;
    int pressesOfJ = 0;
    int pressesOfK = 0;
};

TYPED_TEST_SUITE_P(HotKeyServiceContract);

TYPED_TEST_P(HotKeyServiceContract, EveryPressIsHeardOnce)
{
    ASSERT_TRUE(this->add(this->letterK, this->pressesOfK));
    ASSERT_TRUE(this->add(this->letterJ, this->pressesOfJ));
    ASSERT_TRUE(this->isHeard(this->letterJ, this->pressesOfJ));

    for (int i = 0; i < 20; ++i)
        this->rig.strike(this->letterK, this->chord);
    ASSERT_TRUE(this->settle(this->letterJ, this->pressesOfJ));

    EXPECT_EQ(this->pressesOfK, 20);
}

TYPED_TEST_P(HotKeyServiceContract, LessThanTheShortcutIsNotHeard)
{
    ASSERT_TRUE(this->add(this->letterK, this->pressesOfK));
    ASSERT_TRUE(this->add(this->letterJ, this->pressesOfJ));
    ASSERT_TRUE(this->isHeard(this->letterJ, this->pressesOfJ));

    this->rig.strike(this->letterK, 0);
    this->rig.strike(this->letterK, HotKeyModifier::shiftKey);
    this->rig.strike(this->letterK, HotKeyModifier::cmdKey);
    ASSERT_TRUE(this->settle(this->letterJ, this->pressesOfJ));

    EXPECT_EQ(this->pressesOfK, 0);
}

TYPED_TEST_P(HotKeyServiceContract, AnUnregisteredShortcutIsNotHeard)
{
    const auto ref = this->add(this->letterK, this->pressesOfK);
    ASSERT_TRUE(ref);
    ASSERT_TRUE(this->add(this->letterJ, this->pressesOfJ));
    ASSERT_TRUE(this->isHeard(this->letterK, this->pressesOfK));
    ASSERT_TRUE(this->isHeard(this->letterJ, this->pressesOfJ)); // It may be taken later than K.

    this->rig.service().unregisterHotKey(*ref);
    ASSERT_TRUE(this->settle(this->letterJ, this->pressesOfJ)); // What was struck before is over.
    const auto before = this->pressesOfK;
    this->rig.strike(this->letterK, this->chord);
    ASSERT_TRUE(this->settle(this->letterJ, this->pressesOfJ));

    EXPECT_EQ(this->pressesOfK, before);
}

TYPED_TEST_P(HotKeyServiceContract, AShortcutIsRegisteredOnceAtATime)
{
    const auto ref = this->add(this->letterK, this->pressesOfK);
    ASSERT_TRUE(ref);
    EXPECT_FALSE(this->add(this->letterK, this->pressesOfJ));

    this->rig.service().unregisterHotKey(*ref);

    ASSERT_TRUE(this->add(this->letterK, this->pressesOfK));
    EXPECT_TRUE(this->isHeard(this->letterK, this->pressesOfK));
    EXPECT_EQ(this->pressesOfJ, 0);
}

TYPED_TEST_P(HotKeyServiceContract, APressMayReplaceItsOwnShortcut)
{
    std::optional<HotKeyRef> ref;
    const auto replace = [&] {
        ++this->pressesOfK;
        this->rig.service().unregisterHotKey(*ref);
        ref = this->add(this->letterJ, this->pressesOfJ);
    };
    ref = this->rig.service().registerHotKey({.keyCode = this->letterK, .modifiers = this->chord},
                                             replace);
    ASSERT_TRUE(ref);

    ASSERT_TRUE(this->isHeard(this->letterK, this->pressesOfK));

    EXPECT_TRUE(this->isHeard(this->letterJ, this->pressesOfJ));
    EXPECT_EQ(this->pressesOfK, 1);
}

REGISTER_TYPED_TEST_SUITE_P(HotKeyServiceContract, EveryPressIsHeardOnce,
                            LessThanTheShortcutIsNotHeard, AnUnregisteredShortcutIsNotHeard,
                            AShortcutIsRegisteredOnceAtATime, APressMayReplaceItsOwnShortcut);

} // namespace clavo
