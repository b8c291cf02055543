// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>
#include <vector>

namespace clavo
{

/// The rates at which a recording is replayed, one variant each.
inline constexpr std::array playbackRates{0.97, 0.985, 1.0, 1.015, 1.03};

/// The recording replayed at a rate, by linear interpolation: above 1 shorter and higher, below 1
/// longer and lower. `rate` is above 0; at exactly 1 the samples are unchanged.
[[nodiscard]] std::vector<float> atRate(std::span<const float> samples, double rate);

} // namespace clavo
