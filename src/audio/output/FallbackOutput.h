// SPDX-License-Identifier: MIT
#pragma once

#include "audio/output/ServerBackedOutput.h"
#include "time/Timer.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace clavo
{

/// Plays through the best of several outputs that has a server. While none has one it renders in
/// silence: voices then run to their end unheard, so nothing is played late.
///
/// One renders at a time. While it runs on anything but its best candidate it asks the better ones
/// again, with growing delays; while paused it asks none. The candidate in use has one log line
/// when it starts, is lost and returns.
class FallbackOutput final : public AudioOutput
{
public:
    struct Candidate {
        std::string name;
        std::unique_ptr<ServerBackedOutput> output;
    };

    static constexpr std::chrono::milliseconds firstDelay{250};
    static constexpr std::chrono::milliseconds longestDelay{1000};
    static constexpr std::chrono::milliseconds longestDelayBeforeAnyServer{5000};

    /// The candidates in order, the best one first.
    FallbackOutput(std::vector<Candidate> candidates, std::unique_ptr<AudioOutput> silent,
                   std::unique_ptr<Timer> timer);
    ~FallbackOutput() override;

    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override;
    void start() override;
    void pause() override;
    [[nodiscard]] bool isRunning() const override;
    [[nodiscard]] OutputStatus status() const override;

private:
    void candidateChanged();
    void selectBest();
    void run(AudioOutput& output);
    void askBetter();
    void retry();
    void logCandidate(std::size_t best);
    [[nodiscard]] std::size_t bestUp() const;

    std::vector<Candidate> m_candidates;
    std::unique_ptr<AudioOutput> m_silent;
    std::unique_ptr<Timer> m_timer;
    std::function<void()> m_configurationChanged;
    bool m_isStarted = false;
    AudioOutput* m_current = nullptr; // The one that may render; null while paused.
    std::chrono::milliseconds m_delay = firstDelay;

    enum class LastLog { nothing, noServer, playing, lost };
    LastLog m_lastLog = LastLog::nothing;
    std::size_t m_logged = 0; // The candidate of the last log line.
};

} // namespace clavo
