// SPDX-License-Identifier: MIT
#include "packs/PlaybackRate.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

std::vector<float> atRate(const std::vector<float>& recording, double rate)
{
    std::vector<float> replayed(replayedLength(recording.size(), rate));
    replay(recording, rate, replayed);
    return replayed;
}

TEST(PlaybackRate, LengthFollowsTheRate)
{
    std::array<std::size_t, playbackRates.size()> lengths{};
    std::ranges::transform(playbackRates, lengths.begin(),
                           [](double rate) { return replayedLength(1000, rate); });

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

TEST(PlaybackRate, EverySampleFollowsTheRuleAtAnyRate)
{
    std::vector<float> recording(3001);
    for (std::size_t i = 0; i < recording.size(); ++i)
        recording[i] = static_cast<float>(static_cast<double>(i * i % 997) / 997 - 0.5);

    for (const double rate :
         {0.3, 0.5, 0.97, 0.985, 0.999999, 1.000001, 1.015, 1.03, 1.5, 2.0, 7.3}) {
        const auto replayed = atRate(recording, rate);
        ASSERT_EQ(replayed.size(), replayedLength(recording.size(), rate));
        for (std::size_t i = 0; i < replayed.size(); ++i) {
            const double position = rate * static_cast<double>(i);
            const auto k = static_cast<std::size_t>(position);
            const auto fraction = static_cast<float>(position - static_cast<double>(k));
            const float next = k + 1 < recording.size() ? recording[k + 1] : 0;
            ASSERT_EQ(replayed[i], recording[k] + (next - recording[k]) * fraction) << rate << i;
        }
    }
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
