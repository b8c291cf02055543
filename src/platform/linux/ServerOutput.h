// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/OutputCandidate.h"
#include "platform/linux/ServerStream.h"
#include "platform/linux/Timer.h"

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// Plays through a sound server: opens a stream on it, and turns what becomes of the stream into
/// the output's link.
///
/// The link is up from the first period the server asks for. A running stream that is asked for
/// nothing for longer than `patience` (the device is gone and there is no other, or it sleeps too
/// deeply) counts as Pending and stops rendering: sounds queued for it would all be heard at once
/// when it comes back. Thread: main.
class ServerOutput : public OutputCandidate
{
public:
    /// Opens a stream, or returns null when there is no server. `changed` is to be called on the
    /// main thread whenever the stream's state or status may have changed, from anywhere.
    using Opener = std::function<std::unique_ptr<ServerStream>(std::function<void()> changed)>;

    static constexpr std::chrono::milliseconds patience{500};

    /// `settle` carries what the library tells in the middle of its calls to a quiet moment,
    /// `stall` measures the patience.
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
    void settle();
    [[nodiscard]] bool takeStatus();
    void stall();
    void stopRunning();
    void stopStalling();

    Opener m_open;
    Mixer* m_mixer = nullptr;
    std::function<void()> m_configurationChanged;
    Link m_link = Link::None;
    OutputStatus m_status; // As last told.
    bool m_isRunning = false;
    bool m_isStalling = false;
    std::unique_ptr<Timer> m_settleTimer;
    std::unique_ptr<Timer> m_stallTimer;
    std::unique_ptr<ServerStream> m_stream; // Goes first: its callbacks use what is above.
};

} // namespace clavo
