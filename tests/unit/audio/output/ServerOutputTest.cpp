// SPDX-License-Identifier: MIT
#include "audio/output/ServerOutput.h"

#include "audio/realtime/Mixer.h"
#include "fakes/SimulatedTime.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using Link = ServerBackedOutput::Link;
using State = ServerStream::State;

/// What the test sees of the stream, also after the stream is gone.
struct Server {
    bool isThere = true;
    State state = State::waiting;
    std::uint32_t quantumFrames = 64;
    std::function<void()> changed;
    int streams = 0;
    bool isOpen = false;
    bool isActive = false;
    const Mixer* plays = nullptr;
};

class FakeStream : public ServerStream
{
public:
    explicit FakeStream(Server& server) : m_server(server)
    {
        ++m_server.streams;
        m_server.isOpen = true;
        m_server.isActive = true;
        m_server.state = State::waiting;
    }
    ~FakeStream() override
    {
        m_server.isOpen = false;
        m_server.plays = nullptr;
    }
    void play(Mixer* mixer) override { m_server.plays = mixer; }
    void activate() override { m_server.isActive = true; }
    void deactivate() override { m_server.isActive = false; }
    [[nodiscard]] State state() const override { return m_server.state; }
    [[nodiscard]] OutputStatus status() const override
    {
        return {.server = "Fake", .quantumFrames = m_server.quantumFrames, .sampleRate = 48000};
    }

private:
    Server& m_server;
};

class ServerOutputTest : public testing::Test
{
protected:
    ServerOutputTest()
    {
        m_output.prepare(m_mixer, [this] {
            ++m_changes;
            if (m_isWanted && !m_output.isRunning())
                m_output.start();
        });
    }

    void become(State state)
    {
        m_server.state = state;
        m_server.changed();
        m_time.advance({});
    }

    void run()
    {
        m_isWanted = true;
        m_output.start();
        become(State::streaming);
        m_time.advance({});
        m_changes = 0;
    }

    Mixer m_mixer;
    Server m_server;
    SimulatedTime m_time;
    std::unique_ptr<ServerBackedOutput> m_made = makeServerOutput(
        [this](std::function<void()> changed) -> std::unique_ptr<ServerStream> {
            if (!m_server.isThere)
                return nullptr;
            m_server.changed = std::move(changed);
            return std::make_unique<FakeStream>(m_server);
        },
        m_time.makeTimer(), m_time.makeTimer());
    ServerBackedOutput& m_output = *m_made;
    bool m_isWanted = false;
    int m_changes = 0;
};

TEST_F(ServerOutputTest, HasNoLinkWithoutAServer)
{
    m_server.isThere = false;
    m_output.start();

    EXPECT_EQ(m_output.link(), Link::none);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_output.status().server, "");
}

TEST_F(ServerOutputTest, OnlyConnectsWhenStartedWithoutALink)
{
    m_output.start();

    EXPECT_EQ(m_output.link(), Link::pending);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, nullptr);
}

TEST_F(ServerOutputTest, ConnectsOnce)
{
    m_output.start();
    m_output.start();
    m_output.connect();

    EXPECT_EQ(m_server.streams, 1);
}

TEST_F(ServerOutputTest, IsUpWithTheFirstPeriodAndRunsWhenStartedThen)
{
    m_isWanted = true;
    m_output.start();
    become(State::streaming);

    EXPECT_EQ(m_output.link(), Link::up);
    EXPECT_EQ(m_output.status().quantumFrames, 64U);
    EXPECT_TRUE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, &m_mixer);
    EXPECT_TRUE(m_server.isActive);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, ReportsNothingFromInsideTheLibrary)
{
    m_output.start();
    m_server.state = State::streaming;
    m_server.changed();

    EXPECT_EQ(m_changes, 0);
    EXPECT_EQ(m_output.link(), Link::pending);
}

TEST_F(ServerOutputTest, LetsTheDeviceSleepWhenTheNewLinkIsUnused)
{
    m_output.start();
    become(State::streaming);

    EXPECT_EQ(m_output.link(), Link::up);
    EXPECT_FALSE(m_server.isActive);
    EXPECT_EQ(m_server.plays, nullptr);
}

TEST_F(ServerOutputTest, PausesAndResumesOnTheSameStreamWithoutAWord)
{
    run();
    m_output.pause();
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, nullptr);
    EXPECT_FALSE(m_server.isActive);
    become(State::waiting);

    m_output.start();
    EXPECT_TRUE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, &m_mixer);
    EXPECT_TRUE(m_server.isActive);
    become(State::streaming);

    EXPECT_EQ(m_server.streams, 1);
    EXPECT_EQ(m_changes, 0);
}

TEST_F(ServerOutputTest, StopsAndFreesABrokenStream)
{
    run();
    m_isWanted = false;
    become(State::broken);

    EXPECT_EQ(m_output.link(), Link::none);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_FALSE(m_server.isOpen);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, ConnectsAnewAfterALoss)
{
    run();
    become(State::broken);

    EXPECT_EQ(m_server.streams, 2);
    EXPECT_EQ(m_output.link(), Link::pending);
    become(State::streaming);
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, ReportsALossWhilePausedToo)
{
    run();
    m_isWanted = false;
    m_output.pause();
    become(State::broken);

    EXPECT_EQ(m_output.link(), Link::none);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, BearsAShortGap)
{
    run();
    become(State::waiting);
    EXPECT_EQ(m_time.untilNext(), streamPatience);
    EXPECT_TRUE(m_output.isRunning());

    become(State::streaming);
    EXPECT_FALSE(m_time.untilNext());
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, StopsRenderingWhenTheGapIsLong)
{
    run();
    become(State::waiting);
    m_time.elapse();

    EXPECT_EQ(m_output.link(), Link::pending);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, nullptr);
    EXPECT_TRUE(m_server.isActive) << "or it would never stream again";
    EXPECT_EQ(m_changes, 1);

    become(State::streaming);
    EXPECT_EQ(m_output.link(), Link::up);
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, StopsRenderingWhenTheDeviceDoesNotWakeUp)
{
    run();
    m_output.pause();
    become(State::waiting);
    m_output.start();
    m_time.advance({});
    ASSERT_EQ(m_time.untilNext(), streamPatience);
    m_time.elapse();

    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_output.link(), Link::pending);
}

TEST_F(ServerOutputTest, DoesNotWaitForPeriodsWhilePaused)
{
    run();
    m_output.pause();
    become(State::waiting);

    EXPECT_FALSE(m_time.untilNext());
    EXPECT_EQ(m_output.link(), Link::up);
}

TEST_F(ServerOutputTest, ReportsAPeriodOnlyWhenItHasChanged)
{
    run();
    become(State::streaming);
    EXPECT_EQ(m_changes, 0);

    m_server.quantumFrames = 1024;
    become(State::streaming);
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(m_output.status().quantumFrames, 1024U);
}

TEST_F(ServerOutputTest, HearsNothingMoreAfterDisconnecting)
{
    run();
    m_server.changed();
    m_output.disconnect();
    m_time.advance({});

    EXPECT_EQ(m_output.link(), Link::none);
    EXPECT_FALSE(m_server.isOpen);
    EXPECT_EQ(m_changes, 0);
}

} // namespace
} // namespace clavo
