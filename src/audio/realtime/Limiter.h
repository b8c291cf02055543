// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"
#include "audio/realtime/StereoBlock.h"

namespace clavo
{

/// Keeps a stereo signal within full scale without changing what is within it already.
///
/// A frame that would exceed ±1 turns both channels down so far that its larger sample is just ±1,
/// at once; from there the gain rises in a straight line to exactly 1 within `releaseFrames`. As
/// long as the gain is 1, samples pass bit by bit. A sample that is not a number or infinite
/// becomes 0 and leaves no trace.
class Limiter
{
public:
    static constexpr int releaseFrames = 4410; // 100 ms.

    void apply(StereoBlock block) noexcept CLAVO_NONBLOCKING;

    /// Back to a gain of 1.
    void reset() noexcept CLAVO_NONBLOCKING;

private:
    int m_framesToRelease = 0;
    float m_reductionPerFrame = 0; // The gain is 1 less this for every frame left to release.
};

} // namespace clavo
