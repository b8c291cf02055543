// SPDX-License-Identifier: MIT
#include "synth/SplitMix64.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

TEST(SplitMix64, GivesThePublishedSequenceOfSeed0)
{
    SplitMix64 random{0};

    EXPECT_EQ(random.next(), 0xe220a8397b1dcdafU);
    EXPECT_EQ(random.next(), 0x6e789e6aa1b965f4U);
    EXPECT_EQ(random.next(), 0x06c45d188009454fU);
}

TEST(SplitMix64, UniformNumbersAreTheUpper53BitsAsAFraction)
{
    SplitMix64 random{0};

    EXPECT_EQ(random.uniform(), static_cast<double>(0xe220a8397b1dcdafU >> 11U) / 0x1p53);
    EXPECT_EQ(random.noise(), 2 * (static_cast<double>(0x6e789e6aa1b965f4U >> 11U) / 0x1p53) - 1);
}

} // namespace
} // namespace clavo
