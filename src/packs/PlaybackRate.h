// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace clavo
{

/// The rates at which a recording is replayed, one variant each.
inline constexpr std::array playbackRates{0.97, 0.985, 1.0, 1.015, 1.03};

/// The number of samples of a recording of `count` samples replayed at a rate, which is above 0.
[[nodiscard]] constexpr std::size_t replayedLength(std::size_t count, double rate)
{
    return static_cast<std::size_t>(static_cast<double>(count) / rate);
}

/// Replays a recording at a rate by linear interpolation: above 1 shorter and higher, below 1
/// longer and lower, at exactly 1 unchanged. `replayed` holds replayedLength() samples.
void replay(std::span<const float> samples, double rate, std::span<float> replayed);

} // namespace clavo
