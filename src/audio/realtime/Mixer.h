// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Limiter.h"
#include "audio/realtime/Nonblocking.h"
#include "audio/realtime/Residual.h"
#include "audio/realtime/SpscQueue.h"
#include "audio/realtime/StereoBlock.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>

namespace clavo
{

/// What the mixer needs to start one voice. Copied to the audio thread and owns nothing: the main
/// thread keeps the samples alive until the mixer releases them.
struct VoiceStart {
    std::span<const float> samples; // Mono, 44,100 per second.
    float left = 1;                 // Linear gain of each side, pan and volume already applied.
    float right = 1;
    std::uint32_t sound = 0; // The caller's number for the samples; returned on their release.
};
static_assert(std::is_trivially_copyable_v<VoiceStart>);

/// Adds up 32 voices into one stereo signal.
///
/// Starting a voice that is still playing cuts off its old sound without a click. The sum is scaled
/// by the volume and limited to full scale. Every accepted sound is released exactly once: when it
/// has ended, was cut off or silenced.
///
/// Thread: audio for render(), main for everything else. Owns: no samples.
class Mixer
{
public:
    static constexpr std::size_t voiceCount = 32;

    /// The maximum number of sounds accepted and not yet returned by takeFinished().
    static constexpr std::size_t soundLimit = 256;

    /// Plays the samples once on the voice (below voiceCount), from the first frame of the next
    /// block. False, without any effect, when soundLimit is reached.
    [[nodiscard]] bool start(std::size_t voice, const VoiceStart& start) noexcept;

    /// The volume of all voices, clamped to 0…1 and reached linearly over the next block. 1 at
    /// first.
    void setVolume(float volume) noexcept;

    /// Drops every sound started so far, heard or not, at the beginning of the next block.
    void silence() noexcept;

    /// A sound whose samples the mixer has released; nothing when there is no further one.
    [[nodiscard]] std::optional<std::uint32_t> takeFinished() noexcept;

    /// Fills the block, of any length.
    void render(StereoBlock out) noexcept CLAVO_NONBLOCKING;

private:
    using Serial = std::uint64_t; // Counts starts from 1.

    struct Command {
        VoiceStart start;
        Serial serial = 0;
        std::uint32_t voice = 0;
    };
    struct Voice {
        std::span<const float> remaining; // Empty: the voice is silent.
        float left = 0;
        float right = 0;
        std::uint32_t sound = 0;
        Serial serial = 0;
        bool isHeard = false;
    };

    void dropSilenced() noexcept CLAVO_NONBLOCKING;
    void takeCommands() noexcept CLAVO_NONBLOCKING;
    void begin(Voice& voice, const Command& command) noexcept CLAVO_NONBLOCKING;
    void addVoice(Voice& voice, StereoBlock out) noexcept CLAVO_NONBLOCKING;
    void applyVolume(StereoBlock out) noexcept CLAVO_NONBLOCKING;
    void release(std::uint32_t sound) noexcept CLAVO_NONBLOCKING;

    // Shared by both threads.
    SpscQueue<Command, soundLimit> m_commands;
    SpscQueue<std::uint32_t, soundLimit> m_finished;
    std::atomic<float> m_volume = 1;
    std::atomic<Serial> m_silenced = 0; // Starts up to this one are to be dropped.
    static_assert(std::atomic<float>::is_always_lock_free);
    static_assert(std::atomic<Serial>::is_always_lock_free);

    // Of the audio thread.
    std::array<Voice, voiceCount> m_voices{};
    Serial m_dropped = 0;                 // Starts up to this one have been dropped.
    std::optional<float> m_appliedVolume; // At the end of the last block.
    Residual m_residual;
    Limiter m_limiter;

    // Of the main thread.
    Serial m_started = 0;
    std::size_t m_outstanding = 0; // Accepted and not returned: the bound of both queues.
};

} // namespace clavo
