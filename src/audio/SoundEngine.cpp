// SPDX-License-Identifier: MIT
#include "audio/SoundEngine.h"

#include "audio/SoundLevels.h"
#include "keyboard/KeyLayout.h"
#include "keyboard/KeySlot.h"
#include "packs/PackLibrary.h"

#include <cstdint>
#include <utility>

namespace clavo
{
namespace
{

using std::chrono::milliseconds;

/// The pack scancodes of A, S, D, space, F, G, H, space, J, K and Return.
constexpr std::array<std::int64_t, 11> previewPhrase{30, 31, 32, 57, 33, 34, 35, 57, 36, 37, 28};

constexpr milliseconds previewStep{105};
constexpr milliseconds previewSpaceDelay{30};
constexpr milliseconds previewHold{65};

} // namespace

SoundEngine::SoundEngine(AudioOutput& output, MakeTimer makeTimer, IndexDraw draw)
    : m_output(output), m_makeTimer(std::move(makeTimer)), m_draw(std::move(draw)),
      m_mouseDown(PackLibrary::mouseVariants(false, m_format)),
      m_mouseUp(PackLibrary::mouseVariants(true, m_format)),
      m_scrollTicks(PackLibrary::synthVariants(scrollTickProfile(), false, m_format)),
      m_idleTimer(m_makeTimer())
{
    m_mixer.setVolume(m_volume);
    m_output.prepare(m_mixer, [this] { restartAfterChange(); });
    start();
}

SoundEngine::~SoundEngine()
{
    m_output.pause(); // From here on it neither renders the mixer nor calls back.
}

void SoundEngine::start()
{
    if (m_output.isRunning())
        return;
    m_output.start();
    scheduleIdleCheck();
}

void SoundEngine::restartAfterChange()
{
    if (m_output.isRunning())
        return;
    m_mixer.silence(); // Interrupted sounds must not be heard when the server returns.
    start();
}

void SoundEngine::play(AudioBufferPtr buffer, float pan, float gain)
{
    freeFinished();
    m_wasUsed = true;
    if (!m_output.isRunning())
        start();

    const auto player = static_cast<std::size_t>(m_nextPlayer);
    m_nextPlayer = (m_nextPlayer + 1) % static_cast<int>(playerCount);
    m_players[player] = {.pan = pan, .gain = gain};
    if (!m_output.isRunning())
        return; // The queue would be emptied much too late.

    const auto samples = buffer->samples();
    const auto sound = m_ledger.keep(std::move(buffer));
    if (!sound)
        return;
    const auto [left, right] = stereoGains(pan, gain);
    if (!m_mixer.start(player, {samples, left, right, *sound}))
        m_ledger.release(*sound);
}

void SoundEngine::playMouse(bool down, float pan)
{
    playAny(down ? m_mouseDown : m_mouseUp, pan * panWidth, mouseGain);
}

void SoundEngine::playScroll(float pan)
{
    playAny(m_scrollTicks, pan * panWidth, scrollGain);
}

void SoundEngine::playAny(const SoundBank::Variants& variants, float pan, float gain)
{
    if (!variants.empty())
        play(variants[m_draw(variants.size())], pan, gain);
}

const std::set<std::int64_t>& SoundEngine::previewScancodes()
{
    static const std::set<std::int64_t> scancodes(previewPhrase.begin(), previewPhrase.end());
    return scancodes;
}

void SoundEngine::preview(SoundBank sounds)
{
    const auto bank = std::make_shared<const SoundBank>(std::move(sounds));

    std::erase_if(m_previewTimers, [](const auto& timer) { return !timer->isRunning(); });
    const auto schedule = [&](milliseconds time, const KeyInfo& key, bool down, float gain) {
        m_previewTimers.push_back(m_makeTimer());
        m_previewTimers.back()->start(time, [this, bank, key, down, gain] {
            if (auto buffer = bank->buffer(key, down, m_draw))
                play(std::move(buffer), key.pan * panWidth, gain);
        });
    };
    milliseconds beat{0};
    for (const auto scancode : previewPhrase) {
        const KeyInfo key = KeyLayout::info(scancode);
        const auto press = beat + (key.slot == KeySlot::space ? previewSpaceDelay : beat.zero());
        schedule(press, key, true, pressGain);
        schedule(press + previewHold, key, false, releaseGain);
        beat += previewStep;
    }
}

void SoundEngine::wake()
{
    m_wasUsed = true;
    start();
}

void SoundEngine::setVolume(float volume)
{
    m_volume = volume;
    m_mixer.setVolume(volume);
}

void SoundEngine::freeFinished()
{
    while (const auto sound = m_mixer.takeFinished())
        m_ledger.release(*sound);
}

void SoundEngine::scheduleIdleCheck()
{
    if (!m_idleTimer->isRunning())
        m_idleTimer->start(idleTime, [this] { pauseIfIdle(); });
}

void SoundEngine::pauseIfIdle()
{
    freeFinished();
    const bool isSounding = m_output.isRunning() && !m_ledger.isEmpty();
    if (std::exchange(m_wasUsed, false) || isSounding) {
        scheduleIdleCheck();
        return;
    }
    m_output.pause();
    if (onPaused)
        onPaused();
}

} // namespace clavo
