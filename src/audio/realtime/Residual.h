// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"
#include "audio/realtime/StereoBlock.h"

namespace clavo
{

/// The echo of every sound that was cut off. The level a sound had when it was cut dies away with a
/// time constant of 1 ms instead of falling in one step, which would click. One level per channel
/// serves all sounds, so any number of cuts costs the same.
class Residual
{
public:
    /// Takes over the frame a cut sound would have played next.
    void add(float left, float right) noexcept CLAVO_NONBLOCKING;

    /// Adds the echo to the block and moves past it.
    void addTo(StereoBlock block) noexcept CLAVO_NONBLOCKING;

    void clear() noexcept CLAVO_NONBLOCKING;

private:
    float m_left = 0;
    float m_right = 0;
};

} // namespace clavo
