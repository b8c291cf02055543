// SPDX-License-Identifier: MIT
#include "desktop/outputs/OutputFixture.h"
#include "fakes/CollectedLog.h"
#include "platform/Platform.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <iostream>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

/// The output as the program makes it, on the server of the desktop.
class ProgramOutputTest : public OutputFixture
{
protected:
    static void soundServer(const std::string& command) { ask("$CLAVO_SOUND_SERVER " + command); }

    [[nodiscard]] bool runsOnTheServer()
    {
        return EventLoop::until(
            [this] { return m_output->isRunning() && !m_output->status().server.empty(); });
    }

    [[nodiscard]] bool hasLostTheServer()
    {
        return EventLoop::until([this] { return m_output->status().server.empty(); });
    }

    CollectedLog logged;
};

TEST_F(ProgramOutputTest, IsBackByItselfAfterTheServersDeath)
{
    use(makeAudioOutput());
    ASSERT_TRUE(runsOnTheServer());
    const auto server = m_output->status().server;

    soundServer("stop");
    ASSERT_TRUE(hasLostTheServer());
    EXPECT_TRUE(m_output->isRunning()) << "in silence, so that sounds end";

    soundServer("start");
    QElapsedTimer sinceReturn;
    sinceReturn.start();
    ASSERT_TRUE(runsOnTheServer());
    std::cout << server << ": back " << sinceReturn.elapsed() << " ms after its return\n";

    EXPECT_EQ(m_output->status().server, server);
    EXPECT_TRUE(isHeardOn(desktopSink));
    EXPECT_THAT(logged.lines(), Contains(StartsWith("sortie audio : " + server)).Times(1));
    EXPECT_THAT(logged.lines(), Contains("sortie audio perdue : " + server).Times(1));
    EXPECT_THAT(logged.lines(),
                Contains(StartsWith("sortie audio de retour : " + server)).Times(1));
}

TEST_F(ProgramOutputTest, EndsItsSoundsWhileThereIsNoServer)
{
    use(makeAudioOutput());
    ASSERT_TRUE(runsOnTheServer());
    soundServer("stop");
    ASSERT_TRUE(hasLostTheServer());

    ASSERT_TRUE(m_mixer.start(0, {.samples = m_tone}));
    EXPECT_TRUE(EventLoop::until([this] { return m_mixer.takeFinished().has_value(); }));

    soundServer("start");
}

TEST_F(ProgramOutputTest, FindsAServerThatComesLater)
{
    soundServer("stop");
    use(makeAudioOutput());
    EXPECT_TRUE(m_output->isRunning());
    EXPECT_EQ(m_output->status().server, "");

    soundServer("start");

    EXPECT_TRUE(runsOnTheServer());
    EXPECT_TRUE(isHeardOn(desktopSink));
}

TEST_F(ProgramOutputTest, SurvivesTheServersDeathAndReturnWhilePaused)
{
    use(makeAudioOutput());
    ASSERT_TRUE(runsOnTheServer());
    m_output->pause();
    soundServer("stop");
    soundServer("start");
    EXPECT_FALSE(m_output->isRunning());

    m_output->start();

    EXPECT_TRUE(runsOnTheServer());
    EXPECT_TRUE(isHeardOn(desktopSink));
}

TEST_F(ProgramOutputTest, DoesNotReportAServerThatDiesWhilePaused)
{
    use(makeAudioOutput());
    ASSERT_TRUE(runsOnTheServer());
    m_output->pause();
    EXPECT_NE(m_output->status().server, "");

    soundServer("stop");
    EXPECT_TRUE(hasLostTheServer());
    EXPECT_FALSE(m_output->isRunning());

    soundServer("start");
}

TEST_F(ProgramOutputTest, FollowsTheDefaultSink)
{
    use(makeAudioOutput());
    ASSERT_TRUE(isHeardOn(desktopSink));
    const auto module =
        ask("pactl load-module module-null-sink sink_name=other rate=48000 norewinds=1");

    ask("pactl set-default-sink other");
    EXPECT_TRUE(isHeardOn("other"));

    ask("pactl unload-module " + module); // The one that is left is the default again.
    EXPECT_TRUE(isHeardOn(desktopSink));
}

TEST_F(ProgramOutputTest, PlaysOnTheServerThatIsAskedForAlone)
{
    setenv("CLAVO_AUDIO", "pulse", 1);
    use(makeAudioOutput());
    unsetenv("CLAVO_AUDIO");

    EXPECT_TRUE(runsOn("PulseAudio"));
}

TEST_F(ProgramOutputTest, IsSilentOnRequest)
{
    setenv("CLAVO_AUDIO", "none", 1);
    use(makeAudioOutput());
    unsetenv("CLAVO_AUDIO");

    EXPECT_TRUE(m_output->isRunning());
    EXPECT_EQ(m_output->status().server, "");
}

TEST_F(ProgramOutputTest, RefusesAnImpossiblePeriodWithOneLogLine)
{
    for (const auto* const wish : {"15", "8193", "128x", "-128", "many"}) {
        logged.clear();
        setenv("CLAVO_QUANTUM", wish, 1);
        const auto output = makeAudioOutput();
        unsetenv("CLAVO_QUANTUM");

        EXPECT_THAT(logged.lines(), ElementsAre(StartsWith("CLAVO_QUANTUM"))) << wish;
    }
}

} // namespace
} // namespace clavo
