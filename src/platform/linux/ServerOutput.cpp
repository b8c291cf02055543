// SPDX-License-Identifier: MIT
#include "platform/linux/ServerOutput.h"

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
    if (m_link != Link::Up || m_isRunning)
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
    return m_link == Link::Up ? m_status : OutputStatus{};
}

void ServerOutput::connect()
{
    if (m_stream)
        return;
    m_stream = m_open([this] { streamChanged(); });
    if (m_stream)
        m_link = Link::Pending;
}

void ServerOutput::disconnect()
{
    stopRunning();
    m_stream.reset();
    m_settleTimer->stop();
    m_link = Link::None;
}

/// May be called from inside the server's library and from inside our own calls.
void ServerOutput::streamChanged()
{
    m_settleTimer->start({}, [this] { settle(); });
}

void ServerOutput::settle()
{
    switch (m_stream->state()) {
    case ServerStream::State::Waiting:
        if (m_isRunning && !std::exchange(m_isStalling, true))
            m_stallTimer->start(patience, [this] { stall(); });
        return;
    case ServerStream::State::Streaming:
        stopStalling();
        if (!takeStatus())
            return;
        break;
    case ServerStream::State::Broken:
        disconnect();
        break;
    }
    m_configurationChanged();
    if (m_link == Link::Up && !m_isRunning)
        m_stream->deactivate(); // Nobody wants it now; an active stream keeps the server awake.
}

/// Whether the streaming stream brings the link up or has another period.
bool ServerOutput::takeStatus()
{
    const auto before = std::exchange(m_status, m_stream->status());
    const bool wasUp = std::exchange(m_link, Link::Up) == Link::Up;
    return !wasUp || before.quantumFrames != m_status.quantumFrames ||
           before.sampleRate != m_status.sampleRate;
}

void ServerOutput::stall()
{
    stopRunning(); // The stream stays active: it streams as soon as there is a device again.
    m_link = Link::Pending;
    m_configurationChanged();
}

void ServerOutput::stopRunning()
{
    stopStalling();
    if (std::exchange(m_isRunning, false))
        m_stream->play(nullptr);
}

void ServerOutput::stopStalling()
{
    m_stallTimer->stop();
    m_isStalling = false;
}

} // namespace clavo
