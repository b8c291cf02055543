// SPDX-License-Identifier: MIT
#pragma once

#include "audio/output/ServerBackedOutput.h"

#include <functional>
#include <string>
#include <utility>

namespace clavo
{

/// A candidate without a server: the test decides whether one answers and what becomes of the link.
class SteerableOutput : public ServerBackedOutput
{
public:
    explicit SteerableOutput(std::string server) : m_server(std::move(server)) {}

    void prepare(Mixer&, std::function<void()> configurationChanged) override
    {
        m_configurationChanged = std::move(configurationChanged);
    }
    void start() override
    {
        connect();
        m_isRunning = m_link == Link::up;
    }
    void pause() override { m_isRunning = false; }
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }
    [[nodiscard]] OutputStatus status() const override
    {
        if (m_link != Link::up)
            return {};
        return {.server = m_server, .quantumFrames = 128, .sampleRate = 48000};
    }

    void connect() override
    {
        if (m_link != Link::none)
            return;
        ++m_attempts;
        if (m_hasServer)
            m_link = Link::pending;
    }
    void disconnect() override
    {
        m_link = Link::none;
        m_isRunning = false;
    }
    [[nodiscard]] Link link() const override { return m_link; }

    /// Whether a server answers the next connection.
    void setServer(bool isThere) { m_hasServer = isThere; }

    /// The server of the connection asks for the first period.
    void comeUp() { become(Link::up); }
    /// The server of the connection dies.
    void loseServer()
    {
        m_hasServer = false;
        become(Link::none);
    }
    void loseDevice() { become(Link::pending); }

    /// How often a server was looked for.
    [[nodiscard]] int attempts() const { return m_attempts; }

private:
    void become(Link link)
    {
        m_link = link;
        m_isRunning = m_isRunning && link == Link::up;
        m_configurationChanged();
    }

    std::string m_server;
    std::function<void()> m_configurationChanged;
    bool m_hasServer = true;
    Link m_link = Link::none;
    bool m_isRunning = false;
    int m_attempts = 0;
};

} // namespace clavo
