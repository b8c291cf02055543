// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace clavo
{

/// The playback rates of a recording's variants.
inline constexpr std::array playbackRates{0.97, 0.985, 1.0, 1.015, 1.03};

/// The length of a recording of `count` samples when replayed at a rate above 0.
[[nodiscard]] constexpr std::size_t replayedLength(std::size_t count, double rate)
{
    return static_cast<std::size_t>(static_cast<double>(count) / rate);
}

/// Replays a recording by linear interpolation. A rate above 1 gives a shorter and higher sound,
/// below 1 a longer and lower one, exactly 1 the recording itself. `replayed` has replayedLength()
/// samples.
void replay(std::span<const float> samples, double rate, std::span<float> replayed);

} // namespace clavo
