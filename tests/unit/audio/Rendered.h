// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/StereoBlock.h"

#include <cstddef>
#include <limits>
#include <vector>

namespace clavo
{

/// One stereo block of its own memory. Begins as garbage, as an output's block may.
struct Rendered {
    explicit Rendered(std::size_t frames)
        : left(frames, std::numeric_limits<float>::quiet_NaN()), right(left)
    {
    }

    [[nodiscard]] StereoBlock block() { return {.left = left, .right = right}; }

    std::vector<float> left;
    std::vector<float> right;
};

/// The next block of whatever renders: a mixer or an output.
template <typename Source> Rendered rendered(Source& source, std::size_t frames)
{
    Rendered result(frames);
    source.render(result.block());
    return result;
}

} // namespace clavo
