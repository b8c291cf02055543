// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/realtime/Mixer.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <vector>

namespace clavo
{

/// What every output promises. A Host has
///   std::unique_ptr<AudioOutput> make()                   an output whose server is there,
///   bool until(const std::function<bool()>& isFulfilled)  lets main loop and device run; false
///                                                         after too long a time,
///   bool isThere(const AudioOutput&)                      plays on its own server,
///   void goOn()                                           lets them run for about a millisecond.
template <typename Host> class AudioOutputContract : public testing::Test
{
protected:
    AudioOutputContract()
    {
        m_output->prepare(*m_mixer, [this] {
            EXPECT_FALSE(m_isCalling) << "told from inside a call";
            ++m_changes;
            if (m_isWanted && !m_output->isRunning())
                m_output->start();
        });
    }

    void start()
    {
        m_isWanted = true;
        m_isCalling = true;
        m_output->start();
        m_isCalling = false;
    }

    void pause()
    {
        m_isWanted = false;
        m_isCalling = true;
        m_output->pause();
        m_isCalling = false;
    }

    [[nodiscard]] bool run()
    {
        start();
        return m_host.until([this] { return m_host.isThere(*m_output); });
    }

    /// Whether a sound started now plays to its end.
    [[nodiscard]] bool plays()
    {
        EXPECT_TRUE(m_mixer->start(0, {.samples = m_sound, .left = 0.5F, .right = 0.5F}));
        return m_host.until([this] { return m_mixer->takeFinished().has_value(); });
    }

    /// Renders a sound in this thread while the world goes on, block by block. A block rendered by
    /// the output would be missing.
    void expectNobodyElseRenders()
    {
        constexpr std::size_t blockFrames = 64;
        ASSERT_TRUE(m_mixer->start(1, {.samples = m_ramp, .left = 1, .right = 1}));
        std::array<float, blockFrames> left{};
        std::array<float, blockFrames> right{};
        for (std::size_t at = 0; at < m_ramp.size(); at += blockFrames) {
            m_mixer->render({.left = left, .right = right});
            ASSERT_THAT(left, testing::ElementsAreArray(&m_ramp[at], blockFrames));
            m_host.goOn();
        }
    }

    /// Long enough for what has been asked of a server to come about.
    void letPeriodsPass()
    {
        for (int turn = 0; turn < 100; ++turn)
            m_host.goOn();
    }

    Host m_host;
    std::vector<float> m_sound = std::vector<float>(2000, 0.1F);
    std::vector<float> m_ramp = [] {
        std::vector<float> ramp(6400);
        std::iota(ramp.begin(), ramp.end(), 1.0F);
        for (auto& sample : ramp)
            sample /= 16384; // Exact, and below full scale.
        return ramp;
    }();
    std::unique_ptr<Mixer> m_mixer = std::make_unique<Mixer>();
    std::unique_ptr<AudioOutput> m_output = m_host.make();
    bool m_isWanted = false;
    bool m_isCalling = false;
    int m_changes = 0;
};

TYPED_TEST_SUITE_P(AudioOutputContract);

TYPED_TEST_P(AudioOutputContract, DoesNotRunBeforeItIsStarted)
{
    EXPECT_FALSE(this->m_output->isRunning());
    this->expectNobodyElseRenders();
}

TYPED_TEST_P(AudioOutputContract, PlaysTheMixerWhileItRuns)
{
    ASSERT_TRUE(this->run());

    EXPECT_TRUE(this->plays());
}

TYPED_TEST_P(AudioOutputContract, DoesNotTouchTheMixerOncePaused)
{
    ASSERT_TRUE(this->run());
    ASSERT_TRUE(this->plays());

    this->pause();

    EXPECT_FALSE(this->m_output->isRunning());
    this->expectNobodyElseRenders();
}

TYPED_TEST_P(AudioOutputContract, TellsOfTheSameServerWhilePaused)
{
    ASSERT_TRUE(this->run());
    ASSERT_TRUE(this->plays());
    const auto running = this->m_output->status();

    this->pause();
    this->letPeriodsPass();

    const auto paused = this->m_output->status();
    EXPECT_EQ(paused.server, running.server);
    EXPECT_EQ(paused.quantumFrames, running.quantumFrames);
    EXPECT_EQ(paused.sampleRate, running.sampleRate);
}

TYPED_TEST_P(AudioOutputContract, LetsTheMixerDieOncePaused)
{
    ASSERT_TRUE(this->run());
    this->pause();

    this->m_mixer.reset();

    this->letPeriodsPass();
    EXPECT_FALSE(this->m_output->isRunning());
}

TYPED_TEST_P(AudioOutputContract, PlaysAgainAfterEveryPause)
{
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(this->run());
        ASSERT_TRUE(this->plays()) << "in round " << round;
        this->pause();
    }
}

TYPED_TEST_P(AudioOutputContract, StaysPausedWhenPausedRightAfterItsFirstStart)
{
    this->start();
    this->pause();

    this->letPeriodsPass();
    EXPECT_FALSE(this->m_output->isRunning());
    this->expectNobodyElseRenders();
}

TYPED_TEST_P(AudioOutputContract, TakesRepeatedCallsAsOne)
{
    this->pause();
    ASSERT_TRUE(this->run());
    this->start();
    EXPECT_TRUE(this->plays());
    this->pause();
    this->pause();
    EXPECT_FALSE(this->m_output->isRunning());
    this->expectNobodyElseRenders();
}

TYPED_TEST_P(AudioOutputContract, LetsGoOfTheMixerWhenItDies)
{
    ASSERT_TRUE(this->run());
    ASSERT_TRUE(this->plays());

    this->m_isWanted = false;
    this->m_output.reset();

    this->expectNobodyElseRenders();
}

TYPED_TEST_P(AudioOutputContract, TellsOfNoChangeBecauseItIsPausedOrResumed)
{
    ASSERT_TRUE(this->run());
    ASSERT_TRUE(this->plays());
    this->pause();
    const auto changes = this->m_changes;

    ASSERT_TRUE(this->run());
    ASSERT_TRUE(this->plays());

    EXPECT_EQ(this->m_changes, changes);
}

REGISTER_TYPED_TEST_SUITE_P(AudioOutputContract, DoesNotRunBeforeItIsStarted,
                            PlaysTheMixerWhileItRuns, DoesNotTouchTheMixerOncePaused,
                            TellsOfTheSameServerWhilePaused, LetsTheMixerDieOncePaused,
                            PlaysAgainAfterEveryPause, StaysPausedWhenPausedRightAfterItsFirstStart,
                            TakesRepeatedCallsAsOne, LetsGoOfTheMixerWhenItDies,
                            TellsOfNoChangeBecauseItIsPausedOrResumed);

} // namespace clavo
