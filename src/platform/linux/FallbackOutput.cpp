// SPDX-License-Identifier: MIT
#include "platform/linux/FallbackOutput.h"

#include "log/Log.h"

#include <algorithm>
#include <utility>

namespace clavo
{

using Link = OutputCandidate::Link;

FallbackOutput::FallbackOutput(std::vector<Candidate> candidates,
                               std::unique_ptr<AudioOutput> silent, std::unique_ptr<Timer> timer)
    : m_candidates(std::move(candidates)), m_silent(std::move(silent)), m_timer(std::move(timer))
{
}

FallbackOutput::~FallbackOutput()
{
    pause();
}

void FallbackOutput::prepare(Mixer& mixer, std::function<void()> configurationChanged)
{
    m_configurationChanged = std::move(configurationChanged);
    for (auto& candidate : m_candidates)
        candidate.output->prepare(mixer, [this] { changed(); });
    m_silent->prepare(mixer, [] {});
}

void FallbackOutput::start()
{
    m_isStarted = true;
    if (m_current)
        return; // Should it be lost, then changed() is on its way.
    ask();
    select();
}

void FallbackOutput::pause()
{
    m_isStarted = false;
    m_timer->stop();
    m_isRetryComing = false;
    m_delay = firstDelay;
    if (auto* current = std::exchange(m_current, nullptr))
        current->pause();
}

bool FallbackOutput::isRunning() const
{
    return m_current && m_current->isRunning();
}

OutputStatus FallbackOutput::status() const
{
    return m_current ? m_current->status() : OutputStatus{};
}

/// A candidate has come, gone or changed its period.
void FallbackOutput::changed()
{
    if (!m_isStarted)
        return;
    if (m_current && m_current->isRunning())
        select();
    else
        m_current = nullptr;
    m_configurationChanged();
    if (m_isStarted && !m_current)
        select();
}

/// Runs the best candidate whose link is up, and sees to it that the better ones are asked again.
void FallbackOutput::select()
{
    const auto best = bestUp();
    if (best == m_candidates.size()) {
        run(*m_silent);
    } else {
        run(*m_candidates[best].output);
        for (auto worse = best + 1; worse < m_candidates.size(); ++worse)
            m_candidates[worse]
                .output->disconnect(); // One stream in the desktop's mixer is enough.
    }
    announce(best);

    if (best == 0) {
        m_timer->stop();
        m_isRetryComing = false;
        m_delay = firstDelay;
    } else if (!std::exchange(m_isRetryComing, true)) {
        m_timer->start(m_delay, [this] { retry(); });
    }
}

void FallbackOutput::run(AudioOutput& output)
{
    if (m_current != &output) {
        if (m_current)
            m_current->pause();
        m_current = &output;
    }
    if (!output.isRunning())
        output.start();
}

/// Asks the candidates better than the one in use, the best one first. One that has just been
/// reached is given until the next time before a worse one is asked.
void FallbackOutput::ask()
{
    const auto best = bestUp();
    for (std::size_t better = 0; better < best; ++better) {
        auto& output = *m_candidates[better].output;
        const auto before = output.link();
        output.connect();
        if (before == Link::None && output.link() == Link::Pending)
            return;
    }
}

void FallbackOutput::retry()
{
    m_isRetryComing = false;
    const bool hasPlayed = m_told == Told::Playing || m_told == Told::Lost;
    m_delay = std::min(m_delay * 2, hasPlayed ? longestDelay : longestDelayBeforeAnyServer);
    if (m_told == Told::Nothing && m_delay > longestDelay) { // A slow server has had its time.
        m_told = Told::NoServer;
        log::notice("aucune sortie audio pour l'instant, la recherche continue");
    }
    ask();
    select();
}

/// Writes the log line that the candidate in use deserves, if any.
void FallbackOutput::announce(std::size_t best)
{
    if (best == m_candidates.size()) {
        if (m_told != Told::Playing)
            return;
        m_told = Told::Lost;
        log::notice("sortie audio perdue : {}", m_candidates[m_toldOf].name);
        return;
    }
    if (m_told == Told::Playing && m_toldOf == best)
        return;
    const auto* const what = m_told == Told::Lost ? "sortie audio de retour" : "sortie audio";
    m_told = Told::Playing;
    m_toldOf = best;
    const auto& candidate = m_candidates[best];
    const auto granted = candidate.output->status();
    log::notice("{} : {}, période de {} trames à {} Hz", what, candidate.name,
                granted.quantumFrames, granted.sampleRate);
}

/// The number of candidates when none is up.
std::size_t FallbackOutput::bestUp() const
{
    const auto isUp = [](const Candidate& candidate) {
        return candidate.output->link() == Link::Up;
    };
    return static_cast<std::size_t>(std::ranges::find_if(m_candidates, isUp) -
                                    m_candidates.begin());
}

} // namespace clavo
