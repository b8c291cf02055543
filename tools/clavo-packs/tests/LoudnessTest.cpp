// SPDX-License-Identifier: MIT
#include "clavo-packs/Loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace clavo
{
namespace
{

std::vector<float> sine(double frequency, double amplitude, double seconds)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * 44100));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / 44100;
        samples[i] = static_cast<float>(amplitude * std::sin(phase));
    }
    return samples;
}

std::vector<float> joined(std::vector<float> first, const std::vector<float>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(Loudness, IsThatOfTheStandardsCalibrationTone)
{
    EXPECT_NEAR(integratedLoudness(sine(997, 1, 5)), -3.01, 0.01);
    EXPECT_NEAR(integratedLoudness(sine(997, 0.1, 5)), -23.01, 0.01);
}

// The loudness of these tones with the coefficients that the standard gives for 48 kHz.
TEST(Loudness, WeighsFrequenciesAsTheStandardsFilters)
{
    EXPECT_NEAR(integratedLoudness(sine(40, 1, 5)), -9.27, 0.02);
    EXPECT_NEAR(integratedLoudness(sine(100, 1, 5)), -4.83, 0.02);
    EXPECT_NEAR(integratedLoudness(sine(2000, 1, 5)), -0.63, 0.02);
    EXPECT_NEAR(integratedLoudness(sine(8000, 1, 5)), 0.34, 0.02);
}

TEST(Loudness, SilenceDoesNotLowerIt)
{
    const auto tone = sine(997, 0.1, 10);
    const std::vector<float> silence(441000);

    EXPECT_NEAR(integratedLoudness(joined(tone, silence)), -23.01, 0.1);
}

TEST(Loudness, WhatIsMoreThan10BelowTheRestDoesNotLowerIt)
{
    EXPECT_NEAR(integratedLoudness(joined(sine(997, 0.1, 10), sine(997, 0.01, 10))), -23.01, 0.1);
}

TEST(Loudness, WhatIsLessThan10BelowTheRestDoes)
{
    // A quarter of the power for half of the time: 10 · log10(0.625) below the louder half.
    EXPECT_NEAR(integratedLoudness(joined(sine(997, 0.1, 10), sine(997, 0.05, 10))), -25.05, 0.05);
}

TEST(Loudness, IsMinusInfinityForSilenceAndForWhatHasNoBlock)
{
    constexpr double none = -std::numeric_limits<double>::infinity();

    EXPECT_EQ(integratedLoudness({}), none);
    EXPECT_EQ(integratedLoudness(std::vector<float>(44100)), none);
    EXPECT_EQ(integratedLoudness(sine(997, 1, 0.39)), none);
}

} // namespace
} // namespace clavo
