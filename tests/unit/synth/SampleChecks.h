// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <utility>

namespace clavo
{

inline float peakOf(std::span<const float> samples)
{
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

/// Checks samples at some places against values of reference_values.py, which shares no code with
/// the synthesizer. Mathematics libraries differ in the last bit of a double, which the rounding to
/// single precision turns into an ulp of a component here and there.
inline void expectSamples(std::span<const float> samples,
                          std::initializer_list<std::pair<std::size_t, float>> expected)
{
    for (const auto& [index, value] : expected) {
        ASSERT_LT(index, samples.size());
        EXPECT_NEAR(samples[index], value, 4e-7F) << "sample " << index;
    }
}

} // namespace clavo
