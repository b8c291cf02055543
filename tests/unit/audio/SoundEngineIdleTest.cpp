// SPDX-License-Identifier: MIT
#include "unit/audio/SoundEngineFixture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;

/// An engine whose pauses are counted.
class SoundEngineIdleTest : public SoundEngineFixture
{
protected:
    SoundEngineIdleTest()
    {
        engine().onPaused = [this] { ++pauses; };
    }

    void playShortSound()
    {
        engine().play(steady(0.5F, 1), 1, 1);
        rendered(output, 1);
    }

    int pauses = 0;
};

TEST_F(SoundEngineIdleTest, PausesAnOutputThatWasNeverUsed)
{
    time.advance(9'999ms);
    EXPECT_TRUE(output.isRunning());

    time.advance(1ms);

    EXPECT_FALSE(output.isRunning());
    EXPECT_EQ(pauses, 1);
}

TEST_F(SoundEngineIdleTest, PausesAtTheFirstCheckThatFindsNothingPlayedSinceTheLast)
{
    time.advance(9s);
    playShortSound();

    time.advance(1s);
    EXPECT_TRUE(output.isRunning());
    time.advance(9'999ms);
    EXPECT_TRUE(output.isRunning());
    time.advance(1ms);

    EXPECT_FALSE(output.isRunning());
    EXPECT_EQ(pauses, 1);
}

TEST_F(SoundEngineIdleTest, NeverPausesWhileSomebodyTypes)
{
    for (int i = 0; i < 100; ++i) {
        time.advance(5s);
        playShortSound();
    }

    EXPECT_EQ(output.pauses(), 0);
}

TEST_F(SoundEngineIdleTest, HasAtMostOneCheckWaiting)
{
    for (int i = 0; i < 100; ++i)
        playShortSound();
    engine().wake();
    output.loseServer();
    output.returnServer();

    EXPECT_THAT(time.deadlines(), ElementsAre(10s));
}

TEST_F(SoundEngineIdleTest, WaitsForALongSoundToEnd)
{
    engine().play(steady(0.5F, 1000), 0, 1);

    time.advance(60s);
    EXPECT_TRUE(output.isRunning());
    rendered(output, 1000);
    time.advance(10s);

    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineIdleTest, NeedsNoTimerWhilePaused)
{
    time.advance(10s);

    EXPECT_EQ(time.waiting(), 0U);
}

TEST_F(SoundEngineIdleTest, PlaysAgainAfterAPauseAndPausesAgain)
{
    time.advance(10s);

    engine().play(steady(0.5F, 1), 1, 1);

    EXPECT_THAT(rendered(output, 1).right, ElementsAre(0.4F));
    time.advance(20s);
    EXPECT_EQ(pauses, 2);
    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineIdleTest, IsStartedByAWake)
{
    time.advance(10s);

    engine().wake();

    EXPECT_TRUE(output.isRunning());
    EXPECT_EQ(engine().nextPlayer(), 0);
    time.advance(19s);
    EXPECT_TRUE(output.isRunning());
    time.advance(1s);
    EXPECT_FALSE(output.isRunning());
    EXPECT_EQ(pauses, 2);
}

TEST_F(SoundEngineIdleTest, CountsAWakeAsUse)
{
    time.advance(9s);

    engine().wake();

    time.advance(10s);
    EXPECT_TRUE(output.isRunning());
    EXPECT_EQ(output.starts(), 1);
}

TEST_F(SoundEngineIdleTest, LetsALostOutputSleepWhateverWasStillSounding)
{
    engine().play(steady(0.5F, 1000), 0, 1);
    output.loseServer();

    time.advance(20s);

    EXPECT_EQ(pauses, 1);
    EXPECT_EQ(time.waiting(), 0U);
}

TEST_F(SoundEngineIdleTest, FreesWhatHasBeenPlayed)
{
    auto sound = steady(0.5F, 1);
    const std::weak_ptr<const AudioBuffer> observed = sound;
    engine().play(std::move(sound), 0, 1);
    rendered(output, 1);

    time.advance(10s);

    EXPECT_TRUE(observed.expired());
}

TEST_F(SoundEngineIdleTest, DoesNothingOnceTheEngineIsDestroyed)
{
    destroyEngine();

    time.advance(20s);

    EXPECT_EQ(output.pauses(), 1) << "by the destruction alone";
    EXPECT_EQ(pauses, 0);
}

} // namespace
} // namespace clavo
