// SPDX-License-Identifier: MIT
#include "audio/output/FallbackOutput.h"

#include "log/Log.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

namespace clavo
{
namespace
{

using std::chrono::milliseconds;
using Link = ServerBackedOutput::Link;

constexpr milliseconds firstDelay{250};
constexpr milliseconds longestDelay{1000};
constexpr milliseconds longestDelayBeforeAnyServer{5000};

class FallbackOutput final : public AudioOutput
{
public:
    FallbackOutput(std::vector<NamedOutput> candidates, std::unique_ptr<AudioOutput> silent,
                   std::unique_ptr<Timer> timer)
        : m_candidates(std::move(candidates)), m_silent(std::move(silent)),
          m_timer(std::move(timer))
    {
    }
    ~FallbackOutput() override { FallbackOutput::pause(); }
    FallbackOutput(const FallbackOutput&) = delete;
    FallbackOutput& operator=(const FallbackOutput&) = delete;

    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override
    {
        m_configurationChanged = std::move(configurationChanged);
        for (auto& candidate : m_candidates)
            candidate.output->prepare(mixer, [this] { candidateChanged(); });
        m_silent->prepare(mixer, [] {});
    }

    void start() override
    {
        m_isStarted = true;
        if (m_current)
            return; // If its server is lost, candidateChanged() follows.
        connectBetter();
        selectBest();
    }

    void pause() override
    {
        m_isStarted = false;
        m_timer->stop();
        m_delay = firstDelay;
        if (auto* current = std::exchange(m_current, nullptr))
            current->pause();
    }

    [[nodiscard]] bool isRunning() const override { return m_current && m_current->isRunning(); }

    [[nodiscard]] OutputStatus status() const override
    {
        auto status = statusOfServer();
        for (const auto& candidate : m_candidates) {
            status.searched.push_back(candidate.name);
            if (candidate.output->link() == Link::pending && status.waitingFor.empty() &&
                status.server.empty())
                status.waitingFor = candidate.name;
        }
        return status;
    }

private:
    [[nodiscard]] OutputStatus statusOfServer() const
    {
        if (m_current)
            return m_current->status();
        const auto next = bestUp();
        return next == m_candidates.size() ? OutputStatus{} : m_candidates[next].output->status();
    }

    /// A candidate has connected, been lost or changed its period.
    void candidateChanged()
    {
        if (!m_isStarted)
            return;
        if (m_current && m_current->isRunning())
            selectBest();
        else
            m_current = nullptr;
        m_configurationChanged();
        if (m_isStarted && !m_current)
            selectBest();
    }

    /// Runs the best candidate whose link is up and schedules the next attempt to connect a better
    /// one.
    void selectBest()
    {
        const auto best = bestUp();
        if (best == m_candidates.size()) {
            playOn(*m_silent);
        } else {
            playOn(*m_candidates[best].output);
            // One stream in the desktop's mixer is enough.
            for (auto worse = best + 1; worse < m_candidates.size(); ++worse)
                m_candidates[worse].output->disconnect();
        }
        logCandidate(best);

        if (best == 0) {
            m_timer->stop();
            m_delay = firstDelay;
        } else if (!m_timer->isRunning()) {
            m_timer->start(m_delay, [this] { retry(); });
        }
    }

    void playOn(AudioOutput& output)
    {
        if (m_current != &output) {
            if (m_current)
                m_current->pause();
            m_current = &output;
        }
        if (!output.isRunning())
            output.start();
    }

    /// Connects the candidates better than the one in use, the best one first. As soon as one has
    /// been reached, the worse ones wait for the next attempt.
    void connectBetter()
    {
        const auto best = bestUp();
        for (std::size_t better = 0; better < best; ++better) {
            auto& output = *m_candidates[better].output;
            const auto before = output.link();
            output.connect();
            if (before == Link::none && output.link() == Link::pending)
                return;
        }
    }

    void retry()
    {
        const bool hasPlayed = m_lastLog == LastLog::playing || m_lastLog == LastLog::lost;
        m_delay = std::min(m_delay * 2, hasPlayed ? longestDelay : longestDelayBeforeAnyServer);
        if (m_lastLog == LastLog::nothing && m_delay > longestDelay) {
            m_lastLog = LastLog::noServer; // Even a slow server has had enough time.
            log::notice("aucune sortie audio pour l'instant, la recherche continue");
        }
        connectBetter();
        selectBest();
    }

    /// Writes the log line about the candidate in use, if it has changed.
    void logCandidate(std::size_t best)
    {
        if (best == m_candidates.size()) {
            if (m_lastLog != LastLog::playing)
                return;
            m_lastLog = LastLog::lost;
            log::notice("sortie audio perdue : {}", m_candidates[m_logged].name);
            return;
        }
        if (m_lastLog == LastLog::playing && m_logged == best)
            return;
        const auto* const what =
            m_lastLog == LastLog::lost ? "sortie audio de retour" : "sortie audio";
        m_lastLog = LastLog::playing;
        m_logged = best;
        const auto& candidate = m_candidates[best];
        const auto granted = candidate.output->status();
        log::notice("{} : {}, période de {} trames à {} Hz", what, candidate.name,
                    granted.quantumFrames, granted.sampleRate);
    }

    /// The index of the best candidate whose link is up; the number of candidates if there is none.
    [[nodiscard]] std::size_t bestUp() const
    {
        const auto isUp = [](const NamedOutput& candidate) {
            return candidate.output->link() == Link::up;
        };
        return static_cast<std::size_t>(std::ranges::find_if(m_candidates, isUp) -
                                        m_candidates.begin());
    }

    std::vector<NamedOutput> m_candidates;
    std::unique_ptr<AudioOutput> m_silent;
    std::unique_ptr<Timer> m_timer;
    std::function<void()> m_configurationChanged;
    bool m_isStarted = false;
    AudioOutput* m_current = nullptr; // The one that may render; null while paused.
    milliseconds m_delay = firstDelay;

    enum class LastLog { nothing, noServer, playing, lost };
    LastLog m_lastLog = LastLog::nothing;
    std::size_t m_logged = 0; // The candidate of the last log line.
};

} // namespace

std::unique_ptr<AudioOutput> makeFallbackOutput(std::vector<NamedOutput> candidates,
                                                std::unique_ptr<AudioOutput> silent,
                                                std::unique_ptr<Timer> timer)
{
    return std::make_unique<FallbackOutput>(std::move(candidates), std::move(silent),
                                            std::move(timer));
}

} // namespace clavo
