// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Mixer.h"
#include "synth/AudioBuffer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace clavo
{

/// The sounds the mixer may be reading. Each is kept alive under a number until the mixer has let
/// go of it. All places exist from the beginning, so keeping a sound allocates nothing.
///
/// Thread: main. Owns: a share of every kept buffer.
class SoundLedger
{
public:
    static constexpr std::size_t capacity = Mixer::soundLimit;

    SoundLedger();

    /// The number the buffer is kept under; nothing when every place is taken.
    [[nodiscard]] std::optional<std::uint32_t> keep(AudioBufferPtr buffer);

    /// Gives the buffer up and frees it if nobody else has it. The number is in use.
    void letGo(std::uint32_t sound);

    [[nodiscard]] bool isEmpty() const { return m_freeCount == capacity; }

private:
    std::array<AudioBufferPtr, capacity> m_buffers;
    std::array<std::uint32_t, capacity> m_free{}; // The first m_freeCount are free.
    std::size_t m_freeCount = capacity;
};

} // namespace clavo
