// SPDX-License-Identifier: MIT
#include "unit/audio/SoundEngineFixture.h"

#include "packs/PackLibrary.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::FloatEq;
using testing::FloatNear;
using testing::Pointwise;

using SoundEngineTest = SoundEngineFixture;

/// What a sound gives on one side, at the engine's first volume.
std::vector<float> scaled(const AudioBufferPtr& sound, float gain)
{
    std::vector<float> result;
    for (const float sample : sound->samples())
        result.push_back(sample * gain * 0.8F);
    return result;
}

TEST_F(SoundEngineTest, BeginsReadyToPlay)
{
    EXPECT_EQ(engine().format(), (AudioFormat{.sampleRate = 44100, .channels = 1}));
    EXPECT_EQ(engine().nextPlayer(), 0);
    EXPECT_EQ(engine().volume(), 0.8F);
    EXPECT_TRUE(engine().keyBank().press.empty());
    EXPECT_TRUE(engine().keyBank().release.empty());
    EXPECT_EQ(engine().players().size(), 32U);
    EXPECT_TRUE(output.isRunning());
    EXPECT_EQ(output.starts(), 1);
}

TEST_F(SoundEngineTest, PlaysABufferAtOnceAndOnce)
{
    engine().play(steady(0.5F, 2), 0, 1);

    const auto block = rendered(output, 4);

    const float level = 0.5F * 0.70710678F * 0.8F;
    EXPECT_THAT(block.left, ElementsAre(FloatEq(level), FloatEq(level), 0.0F, 0.0F));
    EXPECT_EQ(block.left, block.right);
}

TEST_F(SoundEngineTest, PlacesTheSoundByItsPan)
{
    engine().play(steady(0.5F, 1), -1, 0.5F);

    const auto block = rendered(output, 1);

    EXPECT_THAT(block.left, ElementsAre(FloatEq(0.2F)));
    EXPECT_THAT(block.right, ElementsAre(0.0F));
}

TEST_F(SoundEngineTest, HandsPanAndGainToThePlayerUnchanged)
{
    engine().play(steady(0.5F, 1), 0.9F, 0.25F);
    EXPECT_EQ(engine().players()[0], (SoundEngine::Player{.pan = 0.9F, .gain = 0.25F}));

    engine().play(steady(0.5F, 1), -3, 2);
    EXPECT_EQ(engine().players()[1], (SoundEngine::Player{.pan = -3, .gain = 2}));
}

TEST_F(SoundEngineTest, UsesThePlayersInStrictRotation)
{
    for (int played = 1; played <= 70; ++played) {
        engine().play(steady(0, 1), 0, static_cast<float>(played));
        ASSERT_EQ(engine().nextPlayer(), played % 32);
    }

    EXPECT_EQ(engine().players()[31].gain, 64);
    EXPECT_EQ(engine().players()[0].gain, 65);
    EXPECT_EQ(engine().players()[5].gain, 70);
    EXPECT_EQ(engine().players()[6].gain, 39);
}

TEST_F(SoundEngineTest, CutsOffTheSoundThirtyTwoBeforeIt)
{
    engine().play(steady(0.5F, 100'000), 0, 1);
    for (int i = 1; i < 32; ++i)
        engine().play(steady(0, 1), 0, 1);
    const float level = 0.5F * 0.70710678F * 0.8F;
    EXPECT_THAT(rendered(output, 1000).left, Each(FloatEq(level)));

    engine().play(steady(0, 1), 0, 1);

    rendered(output, 1000); // The echo of the cut.
    EXPECT_THAT(rendered(output, 1000).left, Each(0.0F));
}

TEST_F(SoundEngineTest, PlaysAMouseButtonNarrowedAndSofter)
{
    engine().playMouse(true, 1);

    EXPECT_EQ(lastPlayer(), (SoundEngine::Player{.pan = 0.6F, .gain = 0.7F}));
}

TEST_F(SoundEngineTest, PlaysAScrollTickNarrowedAndSoftest)
{
    engine().playScroll(-1);

    EXPECT_EQ(lastPlayer(), (SoundEngine::Player{.pan = -0.6F, .gain = 0.35F}));
}

TEST_F(SoundEngineTest, DrawsOneOfTheFiveVariantsOfAMouseButton)
{
    choice = 3;
    const auto press = PackLibrary::mouseVariants(false, engine().format());
    const auto release = PackLibrary::mouseVariants(true, engine().format());
    constexpr float gain = 0.7F * 0.70710678F;

    engine().playMouse(true, 0);
    EXPECT_THAT(rendered(output, 1323).left, Pointwise(FloatNear(1e-6F), scaled(press[3], gain)));
    engine().playMouse(false, 0);
    EXPECT_THAT(rendered(output, 970).left, Pointwise(FloatNear(1e-6F), scaled(release[3], gain)));

    EXPECT_THAT(choices, ElementsAre(5, 5));
}

TEST_F(SoundEngineTest, DrawsOneOfTheFiveVariantsOfAScrollTick)
{
    choice = 4;
    const auto ticks = PackLibrary::synthVariants(scrollTickProfile(), false, engine().format());

    engine().playScroll(0);

    EXPECT_THAT(rendered(output, 882).left,
                Pointwise(FloatNear(1e-6F), scaled(ticks[4], 0.35F * 0.70710678F)));
    EXPECT_THAT(choices, ElementsAre(5));
}

TEST_F(SoundEngineTest, KeepsTheKeyBankItWasGiven)
{
    const auto sound = steady(0.5F, 1);

    engine().setKeyBank({.press = {{30, {sound}}}, .release = {}});

    EXPECT_EQ(engine().keyBank().buffer({.scancode = 30}, true), sound);
}

TEST_F(SoundEngineTest, AppliesTheVolumeAtOnce)
{
    engine().setVolume(0.25F);
    engine().play(steady(0.5F, 1), 1, 1);

    EXPECT_EQ(engine().volume(), 0.25F);
    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.125F));
}

TEST_F(SoundEngineTest, StartsAStoppedOutputBeforeItPlays)
{
    engine();
    output.pause();

    engine().play(steady(0.5F, 1), 1, 1);

    EXPECT_EQ(output.starts(), 2);
    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.4F));
}

TEST_F(SoundEngineTest, TriesToStartAgainWithEverySoundAndDropsIt)
{
    output.setServer(false);

    engine().play(steady(0.5F, 100), 0.5F, 1);
    engine().play(steady(0.5F, 100), 0.5F, 1);

    EXPECT_EQ(output.starts(), 3);
    EXPECT_EQ(engine().nextPlayer(), 2);
    EXPECT_EQ(engine().players()[1].pan, 0.5F);
    output.setServer(true);
    EXPECT_THAT(rendered(output, 100).left, Each(0.0F)) << "nothing comes out late";
    engine().play(steady(0.5F, 1), 1, 1);
    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.4F));
}

TEST_F(SoundEngineTest, StartsTheOutputAgainWhenItIsLost)
{
    engine();

    output.loseServer();

    EXPECT_EQ(output.starts(), 2);
}

TEST_F(SoundEngineTest, NothingFromBeforeALossIsHeardAfterIt)
{
    engine().play(steady(0.5F, 1000), 0, 1);
    rendered(output, 10);
    engine().play(steady(0.5F, 1000), 0, 1);

    output.loseServer();
    engine().play(steady(0.5F, 1000), 0, 1);
    output.returnServer();

    EXPECT_THAT(rendered(output, 100).left, Each(0.0F));
    engine().play(steady(0.5F, 1), 1, 1);
    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.4F));
}

TEST_F(SoundEngineTest, GoesOnThroughAChangeThatLeavesTheOutputRunning)
{
    engine().play(steady(0.5F, 1000), 1, 1);
    rendered(output, 10);

    output.changeDevice();

    EXPECT_EQ(output.starts(), 1);
    EXPECT_THAT(rendered(output, 100).right, Each(0.4F));
}

TEST_F(SoundEngineTest, KeepsABufferUntilItHasBeenPlayed)
{
    auto sound = steady(0.5F, 100);
    const std::weak_ptr<const AudioBuffer> observed = sound;
    engine().play(std::move(sound), 0, 1);
    rendered(output, 99);
    engine().play(steady(0, 1), 0, 1);
    EXPECT_FALSE(observed.expired());

    rendered(output, 1);
    engine().play(steady(0, 1), 0, 1);

    EXPECT_TRUE(observed.expired());
}

TEST_F(SoundEngineTest, DropsASoundWhenTooManyAreUnderWay)
{
    for (std::size_t i = 0; i < Mixer::soundLimit; ++i)
        engine().play(steady(0, 10), 0, 1);
    auto sound = steady(0.5F, 10);
    const std::weak_ptr<const AudioBuffer> observed = sound;

    engine().play(std::move(sound), 0.5F, 1);

    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(engine().nextPlayer(), (Mixer::soundLimit + 1) % 32);
    EXPECT_EQ(lastPlayer().pan, 0.5F);
    rendered(output, 10);
    engine().play(steady(0.5F, 1), 1, 1);
    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.4F));
}

TEST_F(SoundEngineTest, StopsTheOutputWhenItIsDestroyed)
{
    engine().play(steady(0.5F, 100), 0, 1);

    destroyEngine();

    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineTest, IsLeftAloneByTheOutputOnceItIsDestroyed)
{
    engine();
    destroyEngine();

    output.loseServer();
    output.returnServer();

    EXPECT_EQ(output.starts(), 1);
}

} // namespace
} // namespace clavo
