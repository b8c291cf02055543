// SPDX-License-Identifier: MIT
#include "audio/realtime/Limiter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace clavo
{
namespace
{

/// The bits of a magnitude as an integer. They have the order of the magnitudes, with infinity and
/// NaN above all others, and their maximum vectorises.
std::int32_t magnitudeBits(float sample) noexcept CLAVO_NONBLOCKING
{
    return std::bit_cast<std::int32_t>(sample) & std::numeric_limits<std::int32_t>::max();
}

bool isWithinFullScale(std::span<const float> samples) noexcept CLAVO_NONBLOCKING
{
    std::int32_t peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, magnitudeBits(sample));
    return peak <= magnitudeBits(1.0F);
}

float finiteOrZero(float sample) noexcept CLAVO_NONBLOCKING
{
    return std::isfinite(sample) ? sample : 0.0F;
}

} // namespace

void Limiter::apply(StereoBlock block) noexcept CLAVO_NONBLOCKING
{
    if (m_framesToRelease == 0 && isWithinFullScale(block.left) && isWithinFullScale(block.right))
        return;

    for (std::size_t i = 0; i < block.frames(); ++i) {
        const float left = finiteOrZero(block.left[i]);
        const float right = finiteOrZero(block.right[i]);
        const float peak = std::max(std::abs(left), std::abs(right));

        m_framesToRelease = std::max(m_framesToRelease - 1, 0);
        float gain = 1.0F - m_reductionPerFrame * static_cast<float>(m_framesToRelease);
        if (peak * gain > 1.0F) {
            gain = 1.0F / peak;
            m_framesToRelease = releaseFrames;
            m_reductionPerFrame = (1.0F - gain) / static_cast<float>(releaseFrames);
        }
        // Rounding may carry peak × (1 / peak) past 1.
        block.left[i] = std::clamp(left * gain, -1.0F, 1.0F);
        block.right[i] = std::clamp(right * gain, -1.0F, 1.0F);
    }
}

void Limiter::reset() noexcept CLAVO_NONBLOCKING
{
    m_framesToRelease = 0;
}

} // namespace clavo
