// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/SoundLedger.h"
#include "audio/realtime/Mixer.h"
#include "synth/AudioBuffer.h"
#include "synth/SoundBank.h"
#include "time/Timer.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace clavo
{

/// Turns ready buffers into audible sound: a fixed pool of 32 players over the mixer, the key
/// sounds of the selected pack, and the mouse and scroll sounds, made once at construction.
///
/// The output is paused when nothing has been played for a while, so that an idle desktop sleeps;
/// play() and wake() start it again. The output must outlive the engine. Thread: main. Owns: the
/// mixer, and a share of every sound that plays.
class SoundEngine
{
public:
    /// What a player was last given, unchanged.
    struct Player {
        float pan = 0; // −1 left … +1 right.
        float gain = 1;

        bool operator==(const Player&) const = default;
    };

    static constexpr std::size_t playerCount = Mixer::voiceCount;

    /// The interval of the check whether anything was played since the last check; if not, the
    /// output is paused.
    static constexpr std::chrono::milliseconds idleTime{10'000};

    SoundEngine(AudioOutput& output, MakeTimer makeTimer, IndexDraw draw = systemDraw());
    ~SoundEngine();
    SoundEngine(const SoundEngine&) = delete;
    SoundEngine& operator=(const SoundEngine&) = delete;

    /// Plays the buffer, which is not null, once on the next player, which cuts off the sound it is
    /// still playing. Allocates nothing. The player's turn passes in silence when the output does
    /// not run or the mixer has as many sounds as it can take.
    void play(AudioBufferPtr buffer, float pan, float gain);

    void playMouse(bool down, float pan);
    void playScroll(float pan);

    /// Types a short phrase with these sounds of a pack, whichever is selected, within the next
    /// 1.2 s.
    void preview(SoundBank sounds);
    /// The scancodes of the phrase.
    [[nodiscard]] static const std::set<std::int64_t>& previewScancodes();

    /// Starts the output before a sound that is likely to follow.
    void wake();

    void setKeyBank(SoundBank bank) { m_keyBank = std::move(bank); }

    /// The volume of all sounds, from 0 to 1.
    void setVolume(float volume);

    [[nodiscard]] const AudioFormat& format() const { return m_format; }
    [[nodiscard]] const SoundBank& keyBank() const { return m_keyBank; }
    /// Draws the variant of every sound.
    [[nodiscard]] const IndexDraw& draw() const { return m_draw; }
    [[nodiscard]] float volume() const { return m_volume; }
    [[nodiscard]] int nextPlayer() const { return m_nextPlayer; }
    [[nodiscard]] std::span<const Player, playerCount> players() const { return m_players; }

    /// Called whenever the output has been paused.
    std::function<void()> onPaused;

private:
    void start();
    void restartAfterChange();
    void playAny(const SoundBank::Variants& variants, float pan, float gain);
    void freeFinished();
    void scheduleIdleCheck();
    void pauseIfIdle();

    AudioFormat m_format;
    AudioOutput& m_output;
    MakeTimer m_makeTimer;
    IndexDraw m_draw;
    SoundLedger m_ledger;
    Mixer m_mixer;
    std::array<Player, playerCount> m_players{};
    int m_nextPlayer = 0;
    SoundBank m_keyBank;
    SoundBank::Variants m_mouseDown;
    SoundBank::Variants m_mouseUp;
    SoundBank::Variants m_scrollTicks;
    float m_volume = 0.8F;
    bool m_wasUsed = false; // Since the last idle check.
    std::unique_ptr<Timer> m_idleTimer;
    std::vector<std::unique_ptr<Timer>> m_previewTimers; // One for each press and release.
};

} // namespace clavo
