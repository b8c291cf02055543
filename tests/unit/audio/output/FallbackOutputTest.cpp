// SPDX-License-Identifier: MIT
#include "audio/output/FallbackOutput.h"

#include "audio/realtime/Mixer.h"
#include "fakes/CollectedLog.h"
#include "fakes/FakeAudioOutput.h"
#include "fakes/SimulatedTime.h"
#include "fakes/SteerableOutput.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class FallbackOutputTest : public testing::Test
{
protected:
    FallbackOutputTest()
    {
        std::vector<NamedOutput> candidates;
        candidates.push_back({"Best", owned(m_best = new SteerableOutput("Best"))});
        candidates.push_back({"Second", owned(m_second = new SteerableOutput("Second"))});
        m_output = makeFallbackOutput(std::move(candidates), owned(m_silent = new FakeAudioOutput),
                                      m_time.makeTimer());
        m_output->prepare(m_mixer, [this] { m_toldRunning.push_back(m_output->isRunning()); });
    }

    template <typename T> static std::unique_ptr<T> owned(T* object)
    {
        return std::unique_ptr<T>(object);
    }

    /// The output plays on its best candidate.
    void playOnBest()
    {
        m_output->start();
        m_best->comeUp();
        m_log.clear();
        m_toldRunning.clear();
    }

    [[nodiscard]] std::vector<std::string> whoRuns() const
    {
        std::vector<std::string> who;
        if (m_best->isRunning())
            who.emplace_back("best");
        if (m_second->isRunning())
            who.emplace_back("second");
        if (m_silent->isRunning())
            who.emplace_back("silent");
        return who;
    }

    CollectedLog m_log;
    Mixer m_mixer;
    SteerableOutput* m_best = nullptr;
    SteerableOutput* m_second = nullptr;
    FakeAudioOutput* m_silent = nullptr;
    SimulatedTime m_time;
    std::unique_ptr<AudioOutput> m_output;
    std::vector<bool> m_toldRunning; // isRunning() at each configurationChanged.
};

TEST_F(FallbackOutputTest, AsksNoServerBeforeItIsStarted)
{
    EXPECT_EQ(m_best->attempts(), 0);
    EXPECT_FALSE(m_time.untilNext());
    EXPECT_FALSE(m_output->isRunning());
}

TEST_F(FallbackOutputTest, IsSilentUntilTheServerAnswers)
{
    m_output->start();

    EXPECT_THAT(whoRuns(), ElementsAre("silent"));
    EXPECT_TRUE(m_output->isRunning());
    EXPECT_EQ(m_output->status().server, "Fake");
    EXPECT_THAT(m_log.lines(), IsEmpty());
}

TEST_F(FallbackOutputTest, PlaysOnTheBestAsSoonAsItIsUp)
{
    m_output->start();
    m_best->comeUp();

    EXPECT_THAT(whoRuns(), ElementsAre("best"));
    EXPECT_EQ(m_output->status().server, "Best");
    EXPECT_FALSE(m_time.untilNext());
    EXPECT_THAT(m_toldRunning, ElementsAre(true));
    EXPECT_THAT(m_log.lines(),
                ElementsAre("sortie audio : Best, période de 128 trames à 48000 Hz"));
}

TEST_F(FallbackOutputTest, DoesNotBotherTheSecondWhileTheBestIsAnswering)
{
    m_output->start();
    EXPECT_EQ(m_second->attempts(), 0);

    m_best->comeUp();
    EXPECT_EQ(m_second->attempts(), 0);
}

TEST_F(FallbackOutputTest, AsksTheSecondAtOnceWhenTheBestHasNoServer)
{
    m_best->setServer(false);
    m_output->start();
    m_second->comeUp();

    EXPECT_THAT(whoRuns(), ElementsAre("second"));
    EXPECT_THAT(m_log.lines(),
                ElementsAre("sortie audio : Second, période de 128 trames à 48000 Hz"));
}

TEST_F(FallbackOutputTest, AsksTheSecondWhenTheBestDoesNotComeUpInTime)
{
    m_output->start();
    ASSERT_EQ(m_time.untilNext(), 250ms);
    m_time.elapse();

    EXPECT_EQ(m_second->attempts(), 1);
    EXPECT_THAT(whoRuns(), ElementsAre("silent"));
}

TEST_F(FallbackOutputTest, MovesFromTheSecondToTheBestAndLeavesNoStreamBehind)
{
    m_best->setServer(false);
    m_output->start();
    m_second->comeUp();
    m_best->setServer(true);
    m_time.elapse();
    ASSERT_THAT(whoRuns(), ElementsAre("second"));

    m_best->comeUp();

    EXPECT_THAT(whoRuns(), ElementsAre("best"));
    EXPECT_EQ(m_second->link(), ServerBackedOutput::Link::none);
    EXPECT_FALSE(m_time.untilNext());
}

TEST_F(FallbackOutputTest, ReportsALossBeforeItRunsAgain)
{
    playOnBest();
    m_best->loseServer();

    EXPECT_THAT(m_toldRunning, ElementsAre(false));
    EXPECT_THAT(whoRuns(), ElementsAre("silent"));
}

TEST_F(FallbackOutputTest, MayBeStartedByTheReceiverOfTheLoss)
{
    m_output->prepare(m_mixer, [this] { m_output->start(); });
    m_output->start();
    m_best->comeUp();
    m_best->loseServer();

    EXPECT_THAT(whoRuns(), ElementsAre("silent"));
    EXPECT_EQ(m_time.untilNext(), 250ms);
}

TEST_F(FallbackOutputTest, MayBePausedByTheReceiverOfTheLoss)
{
    m_output->prepare(m_mixer, [this] { m_output->pause(); });
    m_output->start();
    m_best->comeUp();
    m_output->start();
    m_best->loseServer();

    EXPECT_THAT(whoRuns(), IsEmpty());
    EXPECT_FALSE(m_time.untilNext());
}

TEST_F(FallbackOutputTest, DoesNotRunAgainBeforeTheLossIsReported)
{
    playOnBest();
    m_best->disconnect(); // Lost, and the word of it still on its way.
    m_output->start();

    EXPECT_FALSE(m_output->isRunning());
}

TEST_F(FallbackOutputTest, AsksALostServerAgainWithGrowingDelaysOfOneSecondAtMost)
{
    playOnBest();
    m_second->setServer(false);
    m_best->loseServer();
    const auto attempts = m_best->attempts();

    std::vector<std::chrono::milliseconds> delays;
    for (int i = 0; i < 5; ++i) {
        delays.push_back(m_time.untilNext().value());
        m_time.elapse();
    }

    EXPECT_THAT(delays, ElementsAre(250ms, 500ms, 1000ms, 1000ms, 1000ms));
    EXPECT_EQ(m_best->attempts(), attempts + 5);
}

TEST_F(FallbackOutputTest, SlowsDownWhereThereWasNeverAServer)
{
    m_best->setServer(false);
    m_second->setServer(false);
    m_output->start();

    std::vector<std::chrono::milliseconds> delays;
    for (int i = 0; i < 7; ++i) {
        delays.push_back(m_time.untilNext().value());
        m_time.elapse();
    }

    EXPECT_THAT(delays, ElementsAre(250ms, 500ms, 1000ms, 2000ms, 4000ms, 5000ms, 5000ms));
    EXPECT_THAT(m_log.lines(),
                ElementsAre("aucune sortie audio pour l'instant, la recherche continue"));
}

TEST_F(FallbackOutputTest, WritesOneLineForALossAndOneForTheReturn)
{
    playOnBest();
    m_second->setServer(false);
    m_best->loseServer();
    m_time.elapse();
    m_time.elapse();
    m_best->setServer(true);
    m_time.elapse();
    m_best->comeUp();

    EXPECT_THAT(whoRuns(), ElementsAre("best"));
    EXPECT_THAT(m_log.lines(),
                ElementsAre("sortie audio perdue : Best",
                            "sortie audio de retour : Best, période de 128 trames à 48000 Hz"));
}

TEST_F(FallbackOutputTest, IsSilentWhileTheDeviceIsGoneAndComesBackWithIt)
{
    playOnBest();
    m_best->loseDevice();
    EXPECT_THAT(whoRuns(), ElementsAre("silent"));

    m_best->comeUp();
    EXPECT_THAT(whoRuns(), ElementsAre("best"));
}

TEST_F(FallbackOutputTest, PassesOnThatTheServerHasChangedThePeriod)
{
    playOnBest();
    m_best->comeUp();

    EXPECT_THAT(m_toldRunning, ElementsAre(true));
    EXPECT_THAT(m_log.lines(), IsEmpty());
}

TEST_F(FallbackOutputTest, AsksNoServerAndWakesNothingWhilePaused)
{
    playOnBest();
    m_best->loseServer();
    m_output->pause();

    EXPECT_THAT(whoRuns(), IsEmpty());
    EXPECT_FALSE(m_output->isRunning());
    EXPECT_FALSE(m_time.untilNext());
}

TEST_F(FallbackOutputTest, KeepsQuietAboutWhatHappensWhilePaused)
{
    playOnBest();
    m_output->pause();
    m_best->loseServer();

    EXPECT_THAT(whoRuns(), IsEmpty());
    EXPECT_THAT(m_toldRunning, IsEmpty());
    EXPECT_THAT(m_log.lines(), IsEmpty());
}

TEST_F(FallbackOutputTest, ResumesTheBestWithoutANewConnectionOrALogLine)
{
    playOnBest();
    const auto attempts = m_best->attempts();
    m_output->pause();
    EXPECT_THAT(whoRuns(), IsEmpty());

    m_output->start();

    EXPECT_THAT(whoRuns(), ElementsAre("best"));
    EXPECT_EQ(m_best->attempts(), attempts);
    EXPECT_THAT(m_log.lines(), IsEmpty());
}

TEST_F(FallbackOutputTest, TellsOfTheServerThatItPlaysOnNextWhilePaused)
{
    playOnBest();
    m_output->pause();

    EXPECT_FALSE(m_output->isRunning());
    EXPECT_EQ(m_output->status().server, "Best");
    EXPECT_EQ(m_output->status().quantumFrames, 128U);
}

TEST_F(FallbackOutputTest, TellsOfTheSecondWhilePausedWhereTheBestHasNoServer)
{
    m_best->setServer(false);
    m_output->start();
    m_second->comeUp();
    m_output->pause();

    EXPECT_EQ(m_output->status().server, "Second");
}

TEST_F(FallbackOutputTest, TellsOfAServerThatAnswersAfterThePause)
{
    m_output->start();
    m_output->pause();
    EXPECT_EQ(m_output->status().server, "");

    m_best->comeUp();

    EXPECT_EQ(m_output->status().server, "Best");
    EXPECT_THAT(whoRuns(), IsEmpty());
}

TEST_F(FallbackOutputTest, TellsOfNoServerThatIsLostWhilePaused)
{
    playOnBest();
    m_output->pause();
    m_best->loseServer();

    EXPECT_EQ(m_output->status().server, "");
}

TEST_F(FallbackOutputTest, TellsOfNoServerBeforeItIsStarted)
{
    EXPECT_EQ(m_output->status().server, "");
}

TEST_F(FallbackOutputTest, StopsWhateverRunsWhenItDies)
{
    playOnBest();
    m_best->loseServer();
    struct Watched : FakeAudioOutput {
        explicit Watched(bool& paused) : wasPaused(paused) {}
        ~Watched() override { wasPaused = pauses() == 1; }
        bool& wasPaused;
    };
    bool wasPaused = false;
    {
        const auto alone =
            makeFallbackOutput({}, std::make_unique<Watched>(wasPaused), m_time.makeTimer());
        alone->prepare(m_mixer, [] {});
        alone->start();
    }
    EXPECT_TRUE(wasPaused);
}

} // namespace
} // namespace clavo
