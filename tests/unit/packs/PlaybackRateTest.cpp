// SPDX-License-Identifier: MIT
#include "packs/PlaybackRate.h"

#include <gmock/gmock.h>

#include <numeric>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

TEST(PlaybackRate, LengthFollowsTheRate)
{
    const std::vector<float> recording(1000);

    std::vector<std::size_t> lengths;
    for (const double rate : playbackRates)
        lengths.push_back(atRate(recording, rate).size());

    EXPECT_THAT(lengths, ElementsAre(1030, 1015, 1000, 985, 970));
}

TEST(PlaybackRate, OriginalRateChangesNothing)
{
    const std::vector<float> recording{0.5F, -1, 0.25F};

    EXPECT_EQ(atRate(recording, 1.0), recording);
}

TEST(PlaybackRate, SamplesLieOnTheStraightLineBetweenTheirNeighbours)
{
    std::vector<float> ramp(100);
    std::iota(ramp.begin(), ramp.end(), 0.0F);

    const auto faster = atRate(ramp, 1.03);

    ASSERT_EQ(faster.size(), 97);
    for (std::size_t i = 0; i < faster.size(); ++i)
        EXPECT_FLOAT_EQ(faster[i], static_cast<float>(1.03 * static_cast<double>(i)));
}

TEST(PlaybackRate, RecordingIsFollowedBySilence)
{
    // Positions 0, 0.97, 1.94; the last one lies between the second sample and the silence.
    EXPECT_THAT(atRate(std::vector<float>{1, 2}, 0.97), ElementsAre(1, FloatEq(1.97F)));
    EXPECT_THAT(atRate(std::vector<float>{1, 2}, 0.6),
                ElementsAre(1, FloatEq(1.6F), FloatEq(2 * 0.8F)));
}

TEST(PlaybackRate, ValuesAreExact)
{
    const auto replayed = atRate(std::vector<float>{0.1F, 0.7F, -0.3F, 0.2F}, 1.015);

    // 0.7 + (−0.3 − 0.7) × 0.015 and −0.3 + (0.2 + 0.3) × 0.03, in single precision.
    EXPECT_THAT(replayed, ElementsAre(0.1F, 0.685000002F, -0.285000026F));
}

TEST(PlaybackRate, NothingStaysNothing)
{
    for (const double rate : playbackRates)
        EXPECT_THAT(atRate({}, rate), IsEmpty());
}

TEST(PlaybackRate, SingleSampleVanishesWhenReplayedFaster)
{
    EXPECT_THAT(atRate(std::vector<float>{1}, 1.015), IsEmpty());
    EXPECT_THAT(atRate(std::vector<float>{1}, 0.97), ElementsAre(1));
}

} // namespace
} // namespace clavo
