// SPDX-License-Identifier: MIT
#include "unit/audio/Rendered.h"

#include "audio/realtime/Mixer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::FloatNear;

const std::vector<float> steady(1000, 0.5F);
const std::vector<float> nothing(1000, 0.0F);

std::vector<float> sine(double frequency, float level, std::size_t frames)
{
    std::vector<float> samples(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / 44100;
        samples[i] = level * static_cast<float>(std::sin(phase));
    }
    return samples;
}

float largestStep(const std::vector<float>& samples)
{
    float largest = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
    return largest;
}

TEST(MixerInterrupt, TheLevelOfACutSoundFadesOut)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = steady, .left = 1, .right = 0.5F}));
    rendered(mixer, 10);
    ASSERT_TRUE(mixer.start(0, {.samples = nothing}));

    const auto block = rendered(mixer, 89);

    EXPECT_EQ(block.left[0], 0.5F) << "the frame the old sound would have played next";
    EXPECT_THAT(block.left[1], FloatEq(0.5F * 0.977579F));
    EXPECT_THAT(block.left[2], FloatEq(0.5F * 0.977579F * 0.977579F));
    EXPECT_THAT(block.right[1], FloatEq(0.25F * 0.977579F));
    EXPECT_THAT(block.left[88], FloatNear(0.0680F, 1e-4F)) << "two time constants";
}

TEST(MixerInterrupt, AddsTheNewSoundAtOnceAndInFull)
{
    Mixer mixer;
    const auto tone = sine(1000, 0.25F, 500);
    ASSERT_TRUE(mixer.start(0, {.samples = nothing}));
    rendered(mixer, 10);
    ASSERT_TRUE(mixer.start(0, {.samples = tone}));

    EXPECT_EQ(rendered(mixer, 500).left, tone);
}

TEST(MixerInterrupt, IsFollowedByExactSilenceInTheEnd)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = steady}));
    rendered(mixer, 10);
    ASSERT_TRUE(mixer.start(0, {.samples = nothing}));

    rendered(mixer, 600);

    EXPECT_THAT(rendered(mixer, 400).left, Each(0.0F));
}

TEST(MixerInterrupt, TakesNoStepThatTheSoundsDoNotTakeThemselves)
{
    const auto low = sine(300, 0.4F, 2000);
    const auto high = sine(1000, 0.4F, 2000);
    const float ownSteps = largestStep(low) + largestStep(high);

    for (std::size_t cut = 1; cut < 200; ++cut) {
        Mixer mixer;
        ASSERT_TRUE(mixer.start(5, {.samples = low}));
        auto signal = rendered(mixer, cut).left;
        ASSERT_TRUE(mixer.start(5, {.samples = high}));
        const auto after = rendered(mixer, 400).left;
        signal.insert(signal.end(), after.begin(), after.end());

        ASSERT_LE(largestStep(signal), ownSteps) << "cut after " << cut << " frames";
    }
}

TEST(MixerInterrupt, AddsUpTheLevelsOfAllSoundsCutAtOnce)
{
    const std::vector<float> quiet(1000, 0.015625F);
    Mixer mixer;
    for (std::size_t voice = 0; voice < Mixer::voiceCount; ++voice)
        ASSERT_TRUE(mixer.start(voice, {.samples = quiet}));
    EXPECT_THAT(rendered(mixer, 2).left, Each(0.5F));
    for (std::size_t voice = 0; voice < Mixer::voiceCount; ++voice)
        ASSERT_TRUE(mixer.start(voice, {.samples = nothing}));

    const auto block = rendered(mixer, 2);

    EXPECT_THAT(block.left, ElementsAre(0.5F, FloatEq(0.5F * 0.977579F)));
}

TEST(MixerInterrupt, LeavesNothingOfASoundThatWasCutBeforeItsFirstFrame)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = steady}));
    ASSERT_TRUE(mixer.start(0, {.samples = nothing}));

    EXPECT_THAT(rendered(mixer, 100).left, Each(0.0F));
}

TEST(MixerInterrupt, LeavesNothingOfASoundThatHasEnded)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = steady}));
    rendered(mixer, steady.size());
    ASSERT_TRUE(mixer.start(0, {.samples = nothing}));

    EXPECT_THAT(rendered(mixer, 100).left, Each(0.0F));
}

TEST(MixerInterrupt, IsNotPoisonedBySamplesThatAreNotFinite)
{
    std::vector<float> broken(100, std::numeric_limits<float>::quiet_NaN());
    broken[50] = std::numeric_limits<float>::infinity();
    Mixer mixer;
    for (const std::size_t cut : {std::size_t{10}, std::size_t{50}}) {
        ASSERT_TRUE(mixer.start(0, {.samples = broken}));
        rendered(mixer, cut);
        ASSERT_TRUE(mixer.start(0, {.samples = nothing}));
        EXPECT_THAT(rendered(mixer, 100).left, Each(0.0F));
    }
}

} // namespace
} // namespace clavo
