// SPDX-License-Identifier: MIT
#include "synth/SwitchSynth.h"

#include "unit/synth/SampleChecks.h"

#include <gmock/gmock.h>

#include <vector>

namespace clavo
{
namespace
{

using testing::Each;
using testing::IsEmpty;

TEST(Finish, SaturatesScalesToTheGainAndFades)
{
    std::vector<float> samples{0.5F, -0.25F, 1.0F, 0.125F};

    SwitchSynth::finish(samples, 1.5, 0.5);

    expectSamples(samples, {{0, 0.236826137F}, {1, -0.0890797898F}, {2, 0.112499997F}, {3, 0}});
}

TEST(Finish, FadesTheLast264SamplesToAnExactZeroInAStraightLine)
{
    std::vector<float> samples(1000, 0.5F);

    SwitchSynth::finish(samples, 1, 1);

    for (std::size_t i = 0; i < samples.size() - 264; ++i)
        ASSERT_FLOAT_EQ(samples[i], 0.9F);
    for (std::size_t remaining = 263; remaining > 0; --remaining)
        ASSERT_FLOAT_EQ(samples[999 - remaining], 0.9F * static_cast<float>(remaining) / 264);
    EXPECT_EQ(samples.back(), 0);
}

TEST(Finish, FadesAShorterSoundOverItsWholeLength)
{
    std::vector<float> samples(4, 0.5F);

    SwitchSynth::finish(samples, 1, 1);

    expectSamples(samples, {{0, 0.675F}, {1, 0.45F}, {2, 0.225F}, {3, 0}});
}

TEST(Finish, LeavesSilenceSilent)
{
    std::vector<float> samples(500);

    SwitchSynth::finish(samples, 1.2, 1);

    EXPECT_THAT(samples, Each(0));
}

TEST(Finish, LeavesNothingAsItIs)
{
    std::vector<float> samples;

    SwitchSynth::finish(samples, 1.2, 1);

    EXPECT_THAT(samples, IsEmpty());
}

} // namespace
} // namespace clavo
