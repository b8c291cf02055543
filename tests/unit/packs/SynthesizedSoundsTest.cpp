// SPDX-License-Identifier: MIT
#include "packs/PackLibrary.h"
#include "synth/SwitchSynth.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

constexpr AudioFormat mono44100;

TEST(SynthesizedSounds, BufferHoldsTheSamples)
{
    const auto sound = PackLibrary::buffer({0.5F, -0.25F}, mono44100);

    ASSERT_NE(sound, nullptr);
    EXPECT_THAT(sound->samples(), ElementsAre(0.5F, -0.25F));
}

TEST(SynthesizedSounds, NoSamplesAreNoBuffer)
{
    EXPECT_EQ(PackLibrary::buffer({}, mono44100), nullptr);
}

TEST(SynthesizedSounds, NoBufferHoldsAnythingButMono)
{
    EXPECT_EQ(PackLibrary::buffer({0.5F}, {.channels = 2}), nullptr);
}

TEST(SynthesizedSounds, StrokeHasFiveVariantsOfAHomeRowKeyInOrder)
{
    for (const bool release : {false, true}) {
        const auto variants = PackLibrary::synthVariants(scrollTickProfile(), release, mono44100);

        ASSERT_THAT(variants, SizeIs(5));
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_THAT(variants[i]->samples(), ElementsAreArray(SwitchSynth::render(
                                                    scrollTickProfile(), KeySlot::row3, release,
                                                    static_cast<std::int64_t>(i))));
    }
}

TEST(SynthesizedSounds, StrokeWithoutLengthHasNoVariants)
{
    auto profile = scrollTickProfile();
    profile.length = 0;

    EXPECT_THAT(PackLibrary::synthVariants(profile, false, mono44100), IsEmpty());
}

TEST(SynthesizedSounds, MouseButtonHasFiveVariantsInOrder)
{
    for (const bool release : {false, true}) {
        const auto variants = PackLibrary::mouseVariants(release, mono44100);

        ASSERT_THAT(variants, SizeIs(5));
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_THAT(variants[i]->samples(), ElementsAreArray(SwitchSynth::renderMouse(
                                                    release, static_cast<std::int64_t>(i))));
    }
}

} // namespace
} // namespace clavo
