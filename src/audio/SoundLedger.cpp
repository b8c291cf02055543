// SPDX-License-Identifier: MIT
#include "audio/SoundLedger.h"

#include <numeric>
#include <utility>

namespace clavo
{

SoundLedger::SoundLedger()
{
    std::iota(m_free.begin(), m_free.end(), 0U);
}

std::optional<std::uint32_t> SoundLedger::keep(AudioBufferPtr buffer)
{
    if (m_freeCount == 0)
        return std::nullopt;
    const std::uint32_t sound = m_free[--m_freeCount];
    m_buffers[sound] = std::move(buffer);
    return sound;
}

void SoundLedger::letGo(std::uint32_t sound)
{
    m_buffers[sound].reset();
    m_free[m_freeCount++] = sound;
}

} // namespace clavo
