// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"
#include "audio/realtime/StereoBlock.h"

namespace clavo
{

/// Keeps a stereo signal within full scale and leaves a signal that is within it unchanged.
///
/// A frame that would exceed ±1 lowers the gain of both channels at once, so that its larger sample
/// is exactly ±1. From there the gain rises linearly to exactly 1 within `releaseFrames`. While the
/// gain is 1, samples pass bit for bit. A NaN or infinite sample becomes 0 and has no other
/// effect.
class Limiter
{
public:
    static constexpr int releaseFrames = 4410; // 100 ms.

    void apply(StereoBlock block) noexcept CLAVO_NONBLOCKING;

    /// Sets the gain to 1.
    void reset() noexcept CLAVO_NONBLOCKING;

private:
    int m_framesToRelease = 0;
    float m_reductionPerFrame = 0; // The gain is 1 minus this per frame left.
};

} // namespace clavo
