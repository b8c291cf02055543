// SPDX-License-Identifier: MIT
#include "synth/SoundBank.h"

#include <gmock/gmock.h>

#include <map>

namespace clavo
{
namespace
{

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;

constexpr KeyInfo keyA{KeySlot::row3, 30, 0, true};
constexpr KeyInfo unknownKey{KeySlot::row3, -1, 0, false};

AudioBufferPtr sound()
{
    return std::make_shared<const AudioBuffer>(std::vector<float>{1});
}

/// Draws the indices of a list in turn and records how many there were to choose from.
struct ScriptedDraw {
    std::vector<std::size_t> indices;
    std::vector<std::size_t> counts;

    std::size_t operator()(std::size_t count)
    {
        const std::size_t index = indices.at(counts.size());
        counts.push_back(count);
        return index;
    }
};

TEST(SoundBank, KeyWithSoundsGetsOneOfItsVariants)
{
    const SoundBank::Variants variants{sound(), sound(), sound()};
    const SoundBank bank{.press = {{30, variants}, {31, {sound()}}}, .release = {}};
    ScriptedDraw draw{.indices = {2}, .counts = {}};

    EXPECT_EQ(bank.buffer(keyA, true, std::ref(draw)), variants[2]);
    EXPECT_THAT(draw.counts, ElementsAre(3));
}

TEST(SoundBank, PressAndReleaseHaveTheirOwnSounds)
{
    const auto down = sound();
    const auto up = sound();
    const SoundBank bank{.press = {{30, {down}}}, .release = {{30, {up}}}};

    EXPECT_EQ(bank.buffer(keyA, true), down);
    EXPECT_EQ(bank.buffer(keyA, false), up);
}

TEST(SoundBank, KeyWithAnEmptyEntryIsSilentAlthoughItsSlotHasSounds)
{
    const SoundBank bank{.press = {{30, {}}, {31, {sound()}}},
                         .release = {{30, {}}, {31, {sound()}}}};

    EXPECT_EQ(bank.buffer(keyA, true), nullptr);
    EXPECT_EQ(bank.buffer(keyA, false), nullptr);
}

TEST(SoundBank, MissingKeyGetsASoundOfItsSlotInTheSlotsOrder)
{
    const auto capsLock = sound();
    const auto quote = sound();
    const auto otherQuote = sound();
    const SoundBank bank{
        .press = {{1, {sound()}}, {40, {quote, otherQuote}}, {57, {sound()}}, {58, {capsLock}}},
        .release = {}};
    ScriptedDraw first{.indices = {0, 0}, .counts = {}};
    ScriptedDraw last{.indices = {1, 1}, .counts = {}};

    EXPECT_EQ(bank.buffer(keyA, true, std::ref(first)), capsLock);
    EXPECT_THAT(first.counts, ElementsAre(2, 1));
    EXPECT_EQ(bank.buffer(keyA, true, std::ref(last)), otherQuote);
    EXPECT_THAT(last.counts, ElementsAre(2, 2));
}

TEST(SoundBank, MissingReleaseGetsAReleaseOfItsSlot)
{
    const auto release = sound();
    const SoundBank bank{.press = {{30, {sound()}}}, .release = {{31, {release}}}};

    EXPECT_EQ(bank.buffer(keyA, false), release);
}

TEST(SoundBank, EmptyEntriesOfTheSlotAreDrawnToo)
{
    const auto found = sound();
    const SoundBank bank{.press = {{31, {}}, {32, {found}}}, .release = {}};
    ScriptedDraw empty{.indices = {0}, .counts = {}};
    ScriptedDraw full{.indices = {1, 0}, .counts = {}};

    EXPECT_EQ(bank.buffer(keyA, true, std::ref(empty)), nullptr);
    EXPECT_EQ(bank.buffer(keyA, true, std::ref(full)), found);
}

TEST(SoundBank, UnknownKeySoundsLikeAHomeRowKey)
{
    const auto homeRow = sound();
    const SoundBank bank{.press = {{30, {homeRow}}, {57, {sound()}}}, .release = {}};

    EXPECT_EQ(bank.buffer(unknownKey, true), homeRow);
}

TEST(SoundBank, PressOfAMissingSlotGetsAnyKeyOfThePack)
{
    const auto escape = sound();
    const auto space = sound();
    const SoundBank bank{.press = {{1, {escape}}, {57, {sound(), space}}}, .release = {}};
    ScriptedDraw first{.indices = {0, 0}, .counts = {}};
    ScriptedDraw second{.indices = {1, 1}, .counts = {}};

    EXPECT_EQ(bank.buffer(keyA, true, std::ref(first)), escape);
    EXPECT_EQ(bank.buffer(keyA, true, std::ref(second)), space);
    EXPECT_THAT(second.counts, ElementsAre(2, 2));
}

TEST(SoundBank, PressThatDrawsAnEmptyEntryIsSilent)
{
    const SoundBank bank{.press = {{57, {}}}, .release = {}};

    EXPECT_EQ(bank.buffer(keyA, true), nullptr);
}

TEST(SoundBank, ReleaseOfAMissingSlotIsSilent)
{
    const SoundBank bank{.press = {{57, {sound()}}}, .release = {{57, {sound()}}}};

    EXPECT_EQ(bank.buffer(keyA, false), nullptr);
    EXPECT_NE(bank.buffer(keyA, true), nullptr);
}

TEST(SoundBank, EmptyBankIsSilent)
{
    const SoundBank bank;

    EXPECT_EQ(bank.buffer(keyA, true), nullptr);
    EXPECT_EQ(bank.buffer(keyA, false), nullptr);
}

TEST(SoundBank, SystemDrawsEveryVariantEquallyOften)
{
    const SoundBank::Variants variants{sound(), sound(), sound(), sound(), sound()};
    const SoundBank bank{.press = {{30, variants}}, .release = {}};
    constexpr int draws = 50000;

    std::map<AudioBufferPtr, int> counts;
    for (int i = 0; i < draws; ++i)
        ++counts[bank.buffer(keyA, true)];

    // The chance that a uniform draw strays this far (χ² with 4 degrees of freedom) is under 1e−9.
    constexpr double expected = draws / 5.0;
    double chiSquare = 0;
    for (const auto& variant : variants)
        chiSquare += (counts[variant] - expected) * (counts[variant] - expected) / expected;
    EXPECT_LT(chiSquare, 48);
    EXPECT_EQ(counts.size(), 5);
}

TEST(SoundBank, SlotIsDrawnByKeyAndNotByHowManySoundsAKeyHas)
{
    const auto single = sound();
    const SoundBank bank{.press = {{31, {single}}, {32, {sound(), sound(), sound(), sound()}}},
                         .release = {}};
    constexpr int draws = 50000;

    int singles = 0;
    for (int i = 0; i < draws; ++i)
        singles += bank.buffer(keyA, true) == single ? 1 : 0;

    EXPECT_NEAR(singles, draws / 2.0, 700); // Six standard deviations.
}

} // namespace
} // namespace clavo
