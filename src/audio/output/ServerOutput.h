// SPDX-License-Identifier: MIT
#pragma once

#include "audio/output/ServerBackedOutput.h"
#include "audio/output/ServerStream.h"
#include "time/Timer.h"

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// Plays through a sound server: opens a stream on it and derives the output's link from the
/// stream's state.
///
/// The link is up from the first period the server asks for. A running stream that is asked for
/// nothing for longer than `patience` (the device is gone and there is no other, or it sleeps too
/// deeply) counts as `pending` and stops rendering: sounds queued for it would all be heard at once
/// when it comes back. Thread: main.
class ServerOutput final : public ServerBackedOutput
{
public:
    /// Opens a stream, or returns null when there is no server. `changed` is to be called on the
    /// main thread whenever the stream's state or status may have changed, from anywhere.
    using Opener = std::function<std::unique_ptr<ServerStream>(std::function<void()> changed)>;

    static constexpr std::chrono::milliseconds patience{500};

    /// `settle` puts off what the library reports in the middle of its calls until they have
    /// returned, `stall` measures the patience.
    ServerOutput(Opener open, std::unique_ptr<Timer> settle, std::unique_ptr<Timer> stall);

    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override;
    void start() override;
    void pause() override;
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }
    [[nodiscard]] OutputStatus status() const override;

    void connect() override;
    void disconnect() override;
    [[nodiscard]] Link link() const override { return m_link; }

private:
    void streamChanged();
    void readStream();
    [[nodiscard]] bool takeStatus();
    void endPatience();
    void stopRunning();

    Opener m_open;
    Mixer* m_mixer = nullptr;
    std::function<void()> m_configurationChanged;
    Link m_link = Link::none;
    OutputStatus m_status; // As last reported.
    bool m_isRunning = false;
    std::unique_ptr<Timer> m_settleTimer;
    std::unique_ptr<Timer> m_stallTimer;
    std::unique_ptr<ServerStream> m_stream; // Last: its callbacks use the others.
};

} // namespace clavo
