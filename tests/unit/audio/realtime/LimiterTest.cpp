// SPDX-License-Identifier: MIT
#include "unit/audio/Rendered.h"

#include "audio/realtime/Limiter.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::Le;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

Rendered limited(Limiter& limiter, std::vector<float> left, std::vector<float> right)
{
    Rendered signal(0);
    signal.left = std::move(left);
    signal.right = std::move(right);
    limiter.apply(signal.block());
    return signal;
}

Rendered limited(Limiter& limiter, const std::vector<float>& both)
{
    return limited(limiter, both, both);
}

std::vector<std::uint32_t> bits(const std::vector<float>& samples)
{
    std::vector<std::uint32_t> result;
    result.reserve(samples.size());
    for (const float sample : samples)
        result.push_back(std::bit_cast<std::uint32_t>(sample));
    return result;
}

std::vector<float> noise(std::size_t count, float level)
{
    std::minstd_rand generator(1);
    std::uniform_real_distribution<float> distribution(-level, level);
    std::vector<float> samples(count);
    for (float& sample : samples)
        sample = distribution(generator);
    return samples;
}

TEST(Limiter, PassesBitByBitWhatIsWithinFullScale)
{
    Limiter limiter;
    std::vector<float> samples = noise(10'000, 1.0F);
    samples.insert(samples.end(), {1.0F, -1.0F, 0.0F, -0.0F, std::nextafter(1.0F, 0.0F),
                                   std::numeric_limits<float>::denorm_min()});

    const auto signal = limited(limiter, samples);

    EXPECT_EQ(bits(signal.left), bits(samples));
    EXPECT_EQ(bits(signal.right), bits(samples));
}

TEST(Limiter, BringsALoudFrameToFullScaleAtOnce)
{
    Limiter limiter;

    const auto signal = limited(limiter, {0.5F, 2.0F, -4.0F});

    EXPECT_THAT(signal.left, ElementsAre(0.5F, 1.0F, -1.0F));
}

TEST(Limiter, TurnsBothChannelsDownTogether)
{
    Limiter limiter;

    const auto signal = limited(limiter, {4.0F, 0.5F}, {1.0F, -8.0F});

    EXPECT_THAT(signal.left, ElementsAre(1.0F, 0.0625F));
    EXPECT_THAT(signal.right, ElementsAre(0.25F, -1.0F));
}

TEST(Limiter, NeverExceedsFullScale)
{
    Limiter limiter;
    auto loud = noise(10'000, 8.0F);
    loud.push_back(std::nextafter(1.0F, 2.0F));
    loud.push_back(std::numeric_limits<float>::max());

    const auto signal = limited(limiter, loud);

    for (const float sample : signal.left)
        ASSERT_LE(std::abs(sample), 1.0F);
}

TEST(Limiter, ReleasesInAStraightLineToExactlyOne)
{
    Limiter limiter;
    std::vector<float> samples(Limiter::releaseFrames + 2, 0.5F);
    samples.front() = 2.0F;

    const auto signal = limited(limiter, samples);

    EXPECT_EQ(signal.left[0], 1.0F);
    EXPECT_THAT(signal.left[441], FloatEq(0.5F * (0.5F + 0.05F)));
    EXPECT_THAT(signal.left[2205], FloatEq(0.5F * 0.75F));
    EXPECT_THAT(signal.left[3969], FloatEq(0.5F * 0.95F));
    EXPECT_LT(signal.left[4409], 0.5F);
    EXPECT_EQ(signal.left[4410], 0.5F);
    EXPECT_EQ(signal.left[4411], 0.5F);
}

TEST(Limiter, ReleasesToExactlyOneAfterTheSlightestReduction)
{
    Limiter limiter;
    std::vector<float> samples(Limiter::releaseFrames + 1, 0.3F);
    samples.front() = std::nextafter(1.0F, 2.0F);
    limited(limiter, samples);

    const auto after = noise(100, 1.0F);

    EXPECT_EQ(bits(limited(limiter, after).left), bits(after));
}

TEST(Limiter, DoesNotDependOnTheLengthOfTheBlocks)
{
    const auto samples = noise(9'000, 2.0F);
    Limiter whole;
    const auto expected = limited(whole, samples);

    Limiter parts;
    std::vector<float> joined;
    std::size_t length = 1;
    for (std::size_t begin = 0; begin < samples.size(); begin += length, length = length % 97 + 1) {
        const auto end = std::min(begin + length, samples.size());
        const auto part = limited(parts, {samples.begin() + static_cast<std::ptrdiff_t>(begin),
                                          samples.begin() + static_cast<std::ptrdiff_t>(end)});
        joined.insert(joined.end(), part.left.begin(), part.left.end());
        length = end - begin;
    }

    EXPECT_EQ(bits(joined), bits(expected.left));
}

TEST(Limiter, MakesSilenceOfWhatIsNotFinite)
{
    Limiter limiter;

    const auto signal =
        limited(limiter, {notANumber, infinity, -infinity, 0.5F}, {0.25F, notANumber, -0.5F, 0.5F});

    EXPECT_THAT(signal.left, ElementsAre(0.0F, 0.0F, 0.0F, 0.5F));
    EXPECT_THAT(signal.right, ElementsAre(0.25F, 0.0F, -0.5F, 0.5F));
}

TEST(Limiter, StaysWellWhenWhatIsNotFiniteComesDuringARelease)
{
    Limiter limiter;

    const auto signal = limited(limiter, {2.0F, notANumber, infinity, 0.5F});

    EXPECT_THAT(signal.left, ElementsAre(1.0F, 0.0F, 0.0F, testing::FloatNear(0.25F, 1e-3F)));
}

TEST(Limiter, StartsAfreshAfterAReset)
{
    Limiter limiter;
    limited(limiter, {4.0F});

    limiter.reset();

    EXPECT_THAT(limited(limiter, {0.5F}).left, ElementsAre(0.5F));
}

} // namespace
} // namespace clavo
