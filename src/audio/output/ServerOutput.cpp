// SPDX-License-Identifier: MIT
#include "audio/output/ServerOutput.h"

#include <utility>

namespace clavo
{
namespace
{

class ServerOutput final : public ServerBackedOutput
{
public:
    ServerOutput(OpenServerStream open, std::unique_ptr<Timer> read, std::unique_ptr<Timer> stall)
        : m_open(std::move(open)), m_readTimer(std::move(read)), m_stallTimer(std::move(stall))
    {
    }

    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override
    {
        m_mixer = &mixer;
        m_configurationChanged = std::move(configurationChanged);
    }

    void start() override
    {
        connect();
        if (m_link != Link::up || m_isRunning)
            return;
        m_isRunning = true;
        m_stream->play(m_mixer);
        m_stream->activate();
        streamChanged();
    }

    void pause() override
    {
        if (!m_isRunning)
            return;
        stopRunning();
        m_stream->deactivate();
    }

    [[nodiscard]] OutputStatus status() const override
    {
        return m_link == Link::up ? m_status : OutputStatus{};
    }

    void connect() override
    {
        if (m_stream)
            return;
        m_stream = m_open([this] { streamChanged(); });
        if (m_stream)
            m_link = Link::pending;
    }

    void disconnect() override
    {
        stopRunning();
        m_stream.reset();
        m_readTimer->stop();
        m_link = Link::none;
    }

    [[nodiscard]] bool isRunning() const override { return m_isRunning; }
    [[nodiscard]] Link link() const override { return m_link; }

private:
    /// May be called from inside the server's library and from inside calls of this class.
    void streamChanged()
    {
        m_readTimer->start({}, [this] { readStream(); });
    }

    void readStream()
    {
        switch (m_stream->state()) {
        case ServerStream::State::waiting:
            if (m_isRunning && !m_stallTimer->isRunning())
                m_stallTimer->start(streamPatience, [this] { endPatience(); });
            return;
        case ServerStream::State::streaming:
            m_stallTimer->stop();
            if (!readStatus())
                return;
            break;
        case ServerStream::State::broken:
            disconnect();
            break;
        }
        m_configurationChanged();
        if (m_link == Link::up && !m_isRunning)
            m_stream->deactivate(); // An active stream keeps the server awake.
    }

    /// True when the stream brings the link up or has a new period.
    [[nodiscard]] bool readStatus()
    {
        const auto before = std::exchange(m_status, m_stream->status());
        const bool wasUp = std::exchange(m_link, Link::up) == Link::up;
        return !wasUp || before.quantumFrames != m_status.quantumFrames ||
               before.sampleRate != m_status.sampleRate;
    }

    void endPatience()
    {
        stopRunning(); // The stream stays active, to continue as soon as there is a device.
        m_link = Link::pending;
        m_configurationChanged();
    }

    void stopRunning()
    {
        m_stallTimer->stop();
        if (std::exchange(m_isRunning, false))
            m_stream->play(nullptr);
    }

    OpenServerStream m_open;
    Mixer* m_mixer = nullptr;
    std::function<void()> m_configurationChanged;
    Link m_link = Link::none;
    OutputStatus m_status; // As last reported.
    bool m_isRunning = false;
    std::unique_ptr<Timer> m_readTimer;
    std::unique_ptr<Timer> m_stallTimer;
    std::unique_ptr<ServerStream> m_stream; // Last: its callbacks use the others.
};

} // namespace

std::unique_ptr<ServerBackedOutput>
makeServerOutput(OpenServerStream open, std::unique_ptr<Timer> read, std::unique_ptr<Timer> stall)
{
    return std::make_unique<ServerOutput>(std::move(open), std::move(read), std::move(stall));
}

} // namespace clavo
