// SPDX-License-Identifier: MIT
#include "unit/audio/Rendered.h"

#include "audio/realtime/Mixer.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;

constexpr std::array click{0.5F, 0.25F};
constexpr std::array ramp{0.125F, 0.25F, 0.375F, 0.5F, 0.625F, 0.75F};

std::vector<std::uint32_t> finished(Mixer& mixer)
{
    std::vector<std::uint32_t> sounds;
    while (const auto sound = mixer.takeFinished())
        sounds.push_back(*sound);
    return sounds;
}

TEST(Mixer, IsSilentWithoutSounds)
{
    Mixer mixer;

    const auto block = rendered(mixer, 4);

    EXPECT_THAT(block.left, Each(0.0F));
    EXPECT_THAT(block.right, Each(0.0F));
}

TEST(Mixer, PlaysAVoiceOnceAndThenLeavesSilence)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = click, .left = 1, .right = 0}));

    const auto block = rendered(mixer, 4);

    EXPECT_THAT(block.left, ElementsAre(0.5F, 0.25F, 0.0F, 0.0F));
    EXPECT_THAT(block.right, Each(0.0F));
}

TEST(Mixer, ScalesEachSideByItsGain)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(31, {.samples = click, .left = 0.5F, .right = 0.25F}));

    const auto block = rendered(mixer, 2);

    EXPECT_THAT(block.left, ElementsAre(0.25F, 0.125F));
    EXPECT_THAT(block.right, ElementsAre(0.125F, 0.0625F));
}

TEST(Mixer, AddsVoicesUp)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(3, {.samples = click}));
    ASSERT_TRUE(mixer.start(17, {.samples = ramp}));

    EXPECT_THAT(rendered(mixer, 3).left, ElementsAre(0.625F, 0.5F, 0.375F));
}

TEST(Mixer, GoesOnWithASoundInBlocksOfAnyLength)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp}));

    EXPECT_THAT(rendered(mixer, 1).left, ElementsAre(0.125F));
    EXPECT_THAT(rendered(mixer, 0).left, ElementsAre());
    EXPECT_THAT(rendered(mixer, 3).left, ElementsAre(0.25F, 0.375F, 0.5F));
    EXPECT_THAT(rendered(mixer, 4).left, ElementsAre(0.625F, 0.75F, 0.0F, 0.0F));
}

TEST(Mixer, StartsASoundAtTheFirstFrameOfTheNextBlock)
{
    Mixer mixer;
    rendered(mixer, 2);
    ASSERT_TRUE(mixer.start(0, {.samples = click}));

    EXPECT_THAT(rendered(mixer, 1).left, ElementsAre(0.5F));
}

TEST(Mixer, LimitsTheSumToFullScale)
{
    constexpr std::array loud{0.75F, 0.75F};
    Mixer mixer;
    for (std::size_t voice = 0; voice < 4; ++voice)
        ASSERT_TRUE(mixer.start(voice, {.samples = loud, .left = 1, .right = 0.5F}));

    const auto block = rendered(mixer, 1);

    EXPECT_THAT(block.left, ElementsAre(1.0F));
    EXPECT_THAT(block.right, ElementsAre(0.5F));
}

TEST(Mixer, ItsOutputIsAlwaysFinite)
{
    constexpr std::array broken{std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity(), 0.5F};
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = broken}));
    ASSERT_TRUE(mixer.start(1, {.samples = ramp}));

    EXPECT_THAT(rendered(mixer, 5).left, ElementsAre(0.0F, 0.0F, 0.875F, 0.5F, 0.625F));
}

TEST(Mixer, FreesASoundThatHasPlayedToItsEnd)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 7}));

    rendered(mixer, 5);
    EXPECT_THAT(finished(mixer), ElementsAre());
    rendered(mixer, 1);
    EXPECT_THAT(finished(mixer), ElementsAre(7));
    rendered(mixer, 1);
    EXPECT_THAT(finished(mixer), ElementsAre());
}

TEST(Mixer, FreesASoundThatIsCutOff)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 7}));
    rendered(mixer, 1);
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 8}));
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 9}));

    rendered(mixer, 1);

    EXPECT_THAT(finished(mixer), ElementsAre(7, 8));
}

TEST(Mixer, FreesASoundWithoutSamplesAtOnce)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 7}));
    ASSERT_TRUE(mixer.start(0, {.samples = {}, .sound = 8}));

    EXPECT_THAT(rendered(mixer, 2).left, Each(0.0F));
    EXPECT_THAT(finished(mixer), ElementsAre(7, 8));
}

TEST(Mixer, RefusesASoundWhenItHoldsAsManyAsItMay)
{
    Mixer mixer;
    for (std::uint32_t sound = 0; sound < Mixer::soundLimit; ++sound)
        ASSERT_TRUE(mixer.start(sound % Mixer::voiceCount,
                                {.samples = click, .left = 0, .right = 0, .sound = sound}));

    EXPECT_FALSE(mixer.start(0, {.samples = click, .sound = 1000}));
    rendered(mixer, 2);
    EXPECT_FALSE(mixer.start(0, {.samples = click, .sound = 1001}))
        << "sounds count until their reports are taken";

    EXPECT_EQ(finished(mixer).size(), Mixer::soundLimit);
    EXPECT_TRUE(mixer.start(0, {.samples = click, .sound = 1002}));
    EXPECT_THAT(rendered(mixer, 2).left, ElementsAre(0.5F, 0.25F));
    EXPECT_THAT(finished(mixer), ElementsAre(1002));
}

TEST(Mixer, BeginsAtTheVolumeItWasGiven)
{
    Mixer mixer;
    mixer.setVolume(0.5F);
    ASSERT_TRUE(mixer.start(0, {.samples = click}));

    EXPECT_THAT(rendered(mixer, 2).left, ElementsAre(0.25F, 0.125F));
}

TEST(Mixer, ReachesANewVolumeInAStraightLineOverOneBlock)
{
    constexpr std::array steady{1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F};
    Mixer mixer;
    rendered(mixer, 4);
    ASSERT_TRUE(mixer.start(0, {.samples = steady, .left = 1, .right = 0.5F}));
    mixer.setVolume(0.25F); // Only the last one of a block counts.
    mixer.setVolume(0.5F);

    const auto block = rendered(mixer, 4);

    EXPECT_THAT(block.left, ElementsAre(0.875F, 0.75F, 0.625F, 0.5F));
    EXPECT_THAT(block.right, ElementsAre(0.4375F, 0.375F, 0.3125F, 0.25F));
    EXPECT_THAT(rendered(mixer, 2).left, Each(0.5F));
}

TEST(Mixer, KeepsTheVolumeRampForABlockThatHasFrames)
{
    constexpr std::array steady{1.0F, 1.0F};
    Mixer mixer;
    rendered(mixer, 1);
    mixer.setVolume(0.0F);
    rendered(mixer, 0);
    ASSERT_TRUE(mixer.start(0, {.samples = steady}));

    EXPECT_THAT(rendered(mixer, 2).left, ElementsAre(0.5F, 0.0F));
}

TEST(Mixer, TakesAVolumeOutOfRangeAsTheNearerEnd)
{
    const auto levelAt = [](float volume) {
        Mixer mixer;
        mixer.setVolume(volume);
        EXPECT_TRUE(mixer.start(0, {.samples = click}));
        return rendered(mixer, 1).left.front();
    };

    EXPECT_EQ(levelAt(1.5F), 0.5F);
    EXPECT_EQ(levelAt(-1.0F), 0.0F);
    EXPECT_EQ(levelAt(std::numeric_limits<float>::infinity()), 0.5F);
    EXPECT_EQ(levelAt(std::numeric_limits<float>::quiet_NaN()), 0.0F);
}

TEST(Mixer, DropsWhatSoundsAndWhatWaitsWhenSilenced)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 1}));
    rendered(mixer, 1);
    ASSERT_TRUE(mixer.start(1, {.samples = ramp, .sound = 2}));

    mixer.silence();

    EXPECT_THAT(rendered(mixer, 4).left, Each(0.0F));
    EXPECT_THAT(finished(mixer), ElementsAre(1, 2));
}

TEST(Mixer, PlaysWhatIsStartedAfterItWasSilenced)
{
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = ramp, .sound = 1}));
    rendered(mixer, 1);
    mixer.silence();
    ASSERT_TRUE(mixer.start(0, {.samples = click, .sound = 2}));

    EXPECT_THAT(rendered(mixer, 3).left, ElementsAre(0.5F, 0.25F, 0.0F));
    EXPECT_THAT(finished(mixer), ElementsAre(1, 2));
}

TEST(Mixer, HasNoEchoOrReductionLeftAfterItWasSilenced)
{
    constexpr std::array loud{4.0F, 4.0F, 4.0F, 4.0F};
    Mixer mixer;
    ASSERT_TRUE(mixer.start(0, {.samples = loud}));
    rendered(mixer, 1);
    ASSERT_TRUE(mixer.start(0, {.samples = loud}));
    rendered(mixer, 1);

    mixer.silence();
    ASSERT_TRUE(mixer.start(0, {.samples = click}));

    EXPECT_THAT(rendered(mixer, 3).left, ElementsAre(0.5F, 0.25F, 0.0F));
}

} // namespace
} // namespace clavo
