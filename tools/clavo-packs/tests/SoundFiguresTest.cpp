// SPDX-License-Identifier: MIT
#include "clavo-packs/SoundFigures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace clavo
{
namespace
{

/// A tone that falls by a factor of e in `decay` seconds, from its loudest sample on.
std::vector<float> decayingTone(double frequency, double decay, double seconds)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * 44100));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / 44100;
        samples[i] = static_cast<float>(std::cos(2 * std::numbers::pi * frequency * time) *
                                        std::exp(-time / decay));
    }
    return samples;
}

std::vector<float> after(double seconds, const std::vector<float>& sound, float gain = 1)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * 44100));
    for (const float sample : sound)
        samples.push_back(gain * sample);
    return samples;
}

TEST(SoundFigures, LevelIsThePeakInDecibelsOfFullScale)
{
    EXPECT_NEAR(figuresOf(std::vector{0.0F, 0.1F, -0.5F, 0.2F}).level, -6.02, 0.01);
}

TEST(SoundFigures, CentroidOfAToneIsItsFrequency)
{
    for (const double frequency : {500.0, 3000.0, 8000.0}) {
        const auto tone = decayingTone(frequency, 1, 0.1);
        EXPECT_NEAR(figuresOf(tone).centroid, frequency, 0.02 * frequency);
    }
}

TEST(SoundFigures, CentroidIsThatOfTheLoudestHit)
{
    auto sound = after(0.1, decayingTone(1000, 0.004, 0.1));
    std::ranges::copy(after(0, decayingTone(6000, 0.004, 0.05), 0.3F), sound.begin());

    EXPECT_NEAR(figuresOf(sound).centroid, 1000, 200);
}

TEST(SoundFigures, CentroidLeavesOutWhatHardlyAnybodyHears)
{
    auto sound = decayingTone(2000, 1, 0.1);
    const auto high = decayingTone(19000, 1, 0.1);
    std::ranges::transform(sound, high, sound.begin(), std::plus{});

    EXPECT_NEAR(figuresOf(sound).centroid, 2000, 100);
}

TEST(SoundFigures, DecayTimesAreThoseOfTheEnergyFromTheLoudestHitOn)
{
    // The energy falls by 60 dB in 6.908 time constants.
    const auto sound = after(0.5, decayingTone(5000, 0.02, 0.5));

    EXPECT_NEAR(figuresOf(sound).t20, 1e-3 + 6.908 * 0.02 / 3, 5e-4);
    EXPECT_NEAR(figuresOf(sound).t60, 1e-3 + 6.908 * 0.02, 5e-4);
}

TEST(SoundFigures, LengthIsThatOfTheWholeSoundAbove40Decibels)
{
    const auto sound = after(0.1, decayingTone(5000, 0.02, 0.5));

    EXPECT_NEAR(figuresOf(sound).length, 0.1 + 4.605 * 0.02, 1e-3);
}

TEST(SoundFigures, CrestIsThePeakAboveThePowerOf60Milliseconds)
{
    std::vector<float> pulse(4410);
    pulse[0] = 1;
    EXPECT_NEAR(figuresOf(pulse).crest, 10 * std::log10(2646), 1e-6);

    EXPECT_NEAR(figuresOf(std::vector<float>(4410, 0.5F)).crest, 0, 1e-6);
}

TEST(SoundFigures, SilenceMeasuresNothing)
{
    EXPECT_EQ(figuresOf({}).centroid, 0);
    EXPECT_EQ(figuresOf(std::vector<float>(100)).t20, 0);
}

TEST(BandLevels, AToneLiesInItsBand)
{
    const auto bands = bandLevels(decayingTone(1000, 0.05, 0.2));

    ASSERT_EQ(bands.size(), 20);
    EXPECT_EQ(std::ranges::max_element(bands) - bands.begin(), 10);
    EXPECT_GT(bands[10], -0.1);
    EXPECT_LT(bands[0], -30);
}

} // namespace
} // namespace clavo
