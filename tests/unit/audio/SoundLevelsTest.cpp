// SPDX-License-Identifier: MIT
#include "audio/SoundLevels.h"

#include <gmock/gmock.h>

#include <limits>

namespace clavo
{
namespace
{

using testing::FieldsAre;
using testing::FloatEq;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

TEST(StereoGains, AreThreeDecibelsDownOnEachSideInTheCentre)
{
    EXPECT_THAT(stereoGains(0, 1), FieldsAre(FloatEq(0.70710678F), FloatEq(0.70710678F)));
}

TEST(StereoGains, LeaveOneSideAloneAtTheEnds)
{
    EXPECT_THAT(stereoGains(-1, 0.8F), FieldsAre(0.8F, 0.0F));
    EXPECT_THAT(stereoGains(1, 0.8F), FieldsAre(0.0F, 0.8F));
}

TEST(StereoGains, FollowTheCircleBetween)
{
    // cos and sin of (1 + pan) · 45°.
    EXPECT_THAT(stereoGains(-0.6F, 1), FieldsAre(FloatEq(0.95105652F), FloatEq(0.30901699F)));
    EXPECT_THAT(stereoGains(0.5F, 1), FieldsAre(FloatEq(0.38268343F), FloatEq(0.92387953F)));
}

TEST(StereoGains, HaveTheSamePowerAtEveryPan)
{
    for (int step = -10; step <= 10; ++step) {
        const auto [left, right] = stereoGains(static_cast<float>(step) / 10, 0.5F);
        EXPECT_FLOAT_EQ(left * left + right * right, 0.25F) << step;
    }
}

TEST(StereoGains, ScaleWithTheGain)
{
    EXPECT_THAT(stereoGains(0, 0.35F), FieldsAre(FloatEq(0.24748737F), FloatEq(0.24748737F)));
    EXPECT_THAT(stereoGains(0.3F, 0), FieldsAre(0.0F, 0.0F));
}

TEST(StereoGains, TakeAPanBeyondTheEndsAsTheEnd)
{
    EXPECT_THAT(stereoGains(-1.5F, 1), FieldsAre(1.0F, 0.0F));
    EXPECT_THAT(stereoGains(infinity, 1), FieldsAre(0.0F, 1.0F));
}

TEST(StereoGains, AreSilentForWhatIsNoPlaceOrLevel)
{
    EXPECT_THAT(stereoGains(notANumber, 1), FieldsAre(0.0F, 0.0F));
    EXPECT_THAT(stereoGains(0, notANumber), FieldsAre(0.0F, 0.0F));
    EXPECT_THAT(stereoGains(0, infinity), FieldsAre(0.0F, 0.0F));
}

} // namespace
} // namespace clavo
