// SPDX-License-Identifier: MIT
#include "platform/linux/ServerOutput.h"

#include "audio/realtime/Mixer.h"
#include "fakes/ManualTimer.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using Link = OutputCandidate::Link;
using State = ServerStream::State;

/// What the test sees of the stream, also after the stream is gone.
struct Server {
    bool isThere = true;
    State state = State::Waiting;
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
        m_server.state = State::Waiting;
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
        m_settle->elapse();
    }

    void run()
    {
        m_isWanted = true;
        m_output.start();
        become(State::Streaming);
        m_settle->elapse();
        m_changes = 0;
    }

    Mixer m_mixer;
    Server m_server;
    ManualTimer* m_settle = new ManualTimer;
    ManualTimer* m_stall = new ManualTimer;
    ServerOutput m_output{[this](std::function<void()> changed) -> std::unique_ptr<ServerStream> {
                              if (!m_server.isThere)
                                  return nullptr;
                              m_server.changed = std::move(changed);
                              return std::make_unique<FakeStream>(m_server);
                          },
                          std::unique_ptr<Timer>(m_settle), std::unique_ptr<Timer>(m_stall)};
    bool m_isWanted = false;
    int m_changes = 0;
};

TEST_F(ServerOutputTest, HasNoLinkWithoutAServer)
{
    m_server.isThere = false;
    m_output.start();

    EXPECT_EQ(m_output.link(), Link::None);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_output.status().server, "");
}

TEST_F(ServerOutputTest, OnlyConnectsWhenStartedWithoutALink)
{
    m_output.start();

    EXPECT_EQ(m_output.link(), Link::Pending);
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
    become(State::Streaming);

    EXPECT_EQ(m_output.link(), Link::Up);
    EXPECT_EQ(m_output.status().quantumFrames, 64U);
    EXPECT_TRUE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, &m_mixer);
    EXPECT_TRUE(m_server.isActive);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, TellsNothingFromInsideTheLibrary)
{
    m_output.start();
    m_server.state = State::Streaming;
    m_server.changed();

    EXPECT_EQ(m_changes, 0);
    EXPECT_EQ(m_output.link(), Link::Pending);
}

TEST_F(ServerOutputTest, LetsTheDeviceSleepWhenNobodyWantsTheLinkThatCameUp)
{
    m_output.start();
    become(State::Streaming);

    EXPECT_EQ(m_output.link(), Link::Up);
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
    become(State::Waiting);

    m_output.start();
    EXPECT_TRUE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, &m_mixer);
    EXPECT_TRUE(m_server.isActive);
    become(State::Streaming);

    EXPECT_EQ(m_server.streams, 1);
    EXPECT_EQ(m_changes, 0);
}

TEST_F(ServerOutputTest, StopsAndLetsGoOfABrokenStream)
{
    run();
    m_isWanted = false;
    become(State::Broken);

    EXPECT_EQ(m_output.link(), Link::None);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_FALSE(m_server.isOpen);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, ConnectsAnewAfterALoss)
{
    run();
    become(State::Broken);

    EXPECT_EQ(m_server.streams, 2);
    EXPECT_EQ(m_output.link(), Link::Pending);
    become(State::Streaming);
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, TellsOfALossWhilePausedToo)
{
    run();
    m_isWanted = false;
    m_output.pause();
    become(State::Broken);

    EXPECT_EQ(m_output.link(), Link::None);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(ServerOutputTest, BearsAShortGap)
{
    run();
    become(State::Waiting);
    EXPECT_EQ(m_stall->delay(), ServerOutput::patience);
    EXPECT_TRUE(m_output.isRunning());

    become(State::Streaming);
    EXPECT_FALSE(m_stall->delay());
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, StopsRenderingWhenTheGapIsLong)
{
    run();
    become(State::Waiting);
    m_stall->elapse();

    EXPECT_EQ(m_output.link(), Link::Pending);
    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_server.plays, nullptr);
    EXPECT_TRUE(m_server.isActive) << "or it would never stream again";
    EXPECT_EQ(m_changes, 1);

    become(State::Streaming);
    EXPECT_EQ(m_output.link(), Link::Up);
    EXPECT_TRUE(m_output.isRunning());
}

TEST_F(ServerOutputTest, StopsRenderingWhenTheDeviceDoesNotWakeUp)
{
    run();
    m_output.pause();
    become(State::Waiting);
    m_output.start();
    m_settle->elapse();
    ASSERT_EQ(m_stall->delay(), ServerOutput::patience);
    m_stall->elapse();

    EXPECT_FALSE(m_output.isRunning());
    EXPECT_EQ(m_output.link(), Link::Pending);
}

TEST_F(ServerOutputTest, DoesNotWaitForPeriodsWhilePaused)
{
    run();
    m_output.pause();
    become(State::Waiting);

    EXPECT_FALSE(m_stall->delay());
    EXPECT_EQ(m_output.link(), Link::Up);
}

TEST_F(ServerOutputTest, TellsOfAPeriodOnlyWhenItHasChanged)
{
    run();
    become(State::Streaming);
    EXPECT_EQ(m_changes, 0);

    m_server.quantumFrames = 1024;
    become(State::Streaming);
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(m_output.status().quantumFrames, 1024U);
}

TEST_F(ServerOutputTest, HearsNothingMoreAfterDisconnecting)
{
    run();
    m_server.changed();
    m_output.disconnect();
    m_settle->elapse();

    EXPECT_EQ(m_output.link(), Link::None);
    EXPECT_FALSE(m_server.isOpen);
    EXPECT_EQ(m_changes, 0);
}

} // namespace
} // namespace clavo
