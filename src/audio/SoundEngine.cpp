// SPDX-License-Identifier: MIT
#include "audio/SoundEngine.h"

#include "audio/StereoGains.h"
#include "keyboard/KeyLayout.h"
#include "packs/PackLibrary.h"

#include <cstdint>
#include <set>
#include <utility>

namespace clavo
{
namespace
{

using std::chrono::milliseconds;

/// Narrows the stereo image of mouse, scroll and preview sounds.
constexpr float panWidth = 0.6F;

constexpr float mouseGain = 0.7F;
constexpr float scrollGain = 0.35F;
constexpr float pressGain = 1.0F;
constexpr float releaseGain = 0.8F;

/// A, S, D, space, F, G, H, space, J, K, Return, as packs count them.
constexpr std::array<std::int64_t, 11> previewPhrase{30, 31, 32, 57, 33, 34, 35, 57, 36, 37, 28};

constexpr milliseconds previewStep{105};
constexpr milliseconds previewSpaceDelay{30};
constexpr milliseconds previewHold{65};

} // namespace

SoundEngine::SoundEngine(AudioOutput& output, RunLater runLater, IndexDraw draw)
    : m_output(output), m_runLater(std::move(runLater)), m_draw(std::move(draw)),
      m_mouseDown(PackLibrary::mouseVariants(false, m_format)),
      m_mouseUp(PackLibrary::mouseVariants(true, m_format)),
      m_scrollTicks(PackLibrary::synthVariants(scrollTickProfile(), false, m_format))
{
    m_mixer.setVolume(m_volume);
    m_output.prepare(m_mixer, whileAlive([this] { restartAfterChange(); }));
    start();
}

SoundEngine::~SoundEngine()
{
    m_output.pause(); // Nothing renders the mixer from here on.
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
    m_mixer.silence(); // What was cut short by the loss must not come out when the server is back.
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
        return; // Nobody would take it from the queue until it is long out of date.

    const auto samples = buffer->samples();
    const auto sound = m_ledger.keep(std::move(buffer));
    if (!sound)
        return;
    const auto [left, right] = stereoGains(pan, gain);
    if (!m_mixer.start(player, {samples, left, right, *sound}))
        m_ledger.letGo(*sound);
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

void SoundEngine::preview(const SoundPack& pack)
{
    const std::set<std::int64_t> scancodes(previewPhrase.begin(), previewPhrase.end());
    const auto bank =
        std::make_shared<const SoundBank>(PackLibrary::makeBank(pack, m_format, &scancodes));

    milliseconds beat{0};
    for (const auto scancode : previewPhrase) {
        const KeyInfo key = KeyLayout::info(scancode);
        const auto schedule = [&](milliseconds time, bool down, float gain) {
            m_runLater(time, whileAlive([this, bank, key, down, gain] {
                           if (auto buffer = bank->buffer(key, down, m_draw))
                               play(std::move(buffer), key.pan * panWidth, gain);
                       }));
        };
        const auto press = beat + (key.slot == KeySlot::space ? previewSpaceDelay : beat.zero());
        schedule(press, true, pressGain);
        schedule(press + previewHold, false, releaseGain);
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
        m_ledger.letGo(*sound);
}

void SoundEngine::scheduleIdleCheck()
{
    if (std::exchange(m_isIdleCheckScheduled, true))
        return;
    m_runLater(idleTime, whileAlive([this] {
                   m_isIdleCheckScheduled = false;
                   pauseIfIdle();
               }));
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

std::function<void()> SoundEngine::whileAlive(std::function<void()> task) const
{
    return [alive = std::weak_ptr(m_alive), task = std::move(task)] {
        if (!alive.expired())
            task();
    };
}

} // namespace clavo
