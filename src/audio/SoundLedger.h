// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Mixer.h"
#include "synth/AudioBuffer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <utility>

namespace clavo
{

/// The sounds that the mixer may be reading. Each is kept alive under a number until the mixer
/// releases it. The capacity is fixed, so keeping a sound allocates nothing.
///
/// Thread: main. Owns: a share of every kept buffer.
class SoundLedger
{
public:
    static constexpr std::size_t capacity = Mixer::soundLimit;

    SoundLedger() { std::iota(m_free.begin(), m_free.end(), 0U); }

    /// Keeps the buffer and returns its number; nothing when the ledger is full.
    [[nodiscard]] std::optional<std::uint32_t> keep(AudioBufferPtr buffer)
    {
        if (m_freeCount == 0)
            return std::nullopt;
        const std::uint32_t sound = m_free[--m_freeCount];
        m_buffers[sound] = std::move(buffer);
        return sound;
    }

    /// Releases the buffer, which is freed if it is not shared. The number must be in use.
    void release(std::uint32_t sound)
    {
        m_buffers[sound].reset();
        m_free[m_freeCount++] = sound;
    }

    [[nodiscard]] bool isEmpty() const { return m_freeCount == capacity; }

private:
    std::array<AudioBufferPtr, capacity> m_buffers;
    std::array<std::uint32_t, capacity> m_free{}; // The first m_freeCount are free.
    std::size_t m_freeCount = capacity;
};

} // namespace clavo
