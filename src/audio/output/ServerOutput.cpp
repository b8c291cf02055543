// SPDX-License-Identifier: MIT
#include "audio/output/ServerOutput.h"

#include <utility>

namespace clavo
{

ServerOutput::ServerOutput(Opener open, std::unique_ptr<Timer> settle, std::unique_ptr<Timer> stall)
    : m_open(std::move(open)), m_settleTimer(std::move(settle)), m_stallTimer(std::move(stall))
{
}

void ServerOutput::prepare(Mixer& mixer, std::function<void()> configurationChanged)
{
    m_mixer = &mixer;
    m_configurationChanged = std::move(configurationChanged);
}

void ServerOutput::start()
{
    connect();
    if (m_link != Link::up || m_isRunning)
        return;
    m_isRunning = true;
    m_stream->play(m_mixer);
    m_stream->activate();
    streamChanged();
}

void ServerOutput::pause()
{
    if (!m_isRunning)
        return;
    stopRunning();
    m_stream->deactivate();
}

OutputStatus ServerOutput::status() const
{
    return m_link == Link::up ? m_status : OutputStatus{};
}

void ServerOutput::connect()
{
    if (m_stream)
        return;
    m_stream = m_open([this] { streamChanged(); });
    if (m_stream)
        m_link = Link::pending;
}

void ServerOutput::disconnect()
{
    stopRunning();
    m_stream.reset();
    m_settleTimer->stop();
    m_link = Link::none;
}

/// May be called from inside the server's library and from inside our own calls.
void ServerOutput::streamChanged()
{
    m_settleTimer->start({}, [this] { readStream(); });
}

void ServerOutput::readStream()
{
    switch (m_stream->state()) {
    case ServerStream::State::waiting:
        if (m_isRunning && !m_stallTimer->isRunning())
            m_stallTimer->start(patience, [this] { endPatience(); });
        return;
    case ServerStream::State::streaming:
        m_stallTimer->stop();
        if (!takeStatus())
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

/// True when the stream brings the link up or has another period than before.
bool ServerOutput::takeStatus()
{
    const auto before = std::exchange(m_status, m_stream->status());
    const bool wasUp = std::exchange(m_link, Link::up) == Link::up;
    return !wasUp || before.quantumFrames != m_status.quantumFrames ||
           before.sampleRate != m_status.sampleRate;
}

void ServerOutput::endPatience()
{
    stopRunning(); // The stream stays active: it streams as soon as there is a device again.
    m_link = Link::pending;
    m_configurationChanged();
}

void ServerOutput::stopRunning()
{
    m_stallTimer->stop();
    if (std::exchange(m_isRunning, false))
        m_stream->play(nullptr);
}

} // namespace clavo
