// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

namespace clavo
{

/// A block of stereo sound to fill: two channels of equal length, full scale ±1, 44,100 frames per
/// second.
struct StereoBlock {
    std::span<float> left;
    std::span<float> right;

    [[nodiscard]] std::size_t frames() const noexcept { return left.size(); }
};

} // namespace clavo
