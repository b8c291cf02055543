// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"
#include "audio/realtime/StereoBlock.h"

namespace clavo
{

/// The declick tail of all sounds that were cut off. The level that a sound had at the cut fades
/// with a time constant of 1 ms instead of dropping in one step, which would click. One level per
/// channel serves all sounds, so the cost does not depend on the number of cuts.
class Residual
{
public:
    /// Adds the frame that a cut sound would have played next.
    void add(float left, float right) noexcept CLAVO_NONBLOCKING;

    /// Adds the tail to the block and moves past it.
    void addTo(StereoBlock block) noexcept CLAVO_NONBLOCKING;

    void clear() noexcept CLAVO_NONBLOCKING;

private:
    float m_left = 0;
    float m_right = 0;
};

} // namespace clavo
