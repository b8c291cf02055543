// SPDX-License-Identifier: MIT
#include "audio/SoundLevels.h"

#include <cmath>
#include <numbers>

namespace clavo
{

StereoGains stereoGains(float pan, float gain)
{
    if (std::isnan(pan) || !std::isfinite(gain))
        return {};
    // Exact at the ends, where the cosine of a rounded π / 2 is not quite 0.
    if (pan <= -1.0F)
        return {.left = gain, .right = 0};
    if (pan >= 1.0F)
        return {.left = 0, .right = gain};
    const double angle = (static_cast<double>(pan) + 1) * std::numbers::pi / 4;
    return {.left = static_cast<float>(gain * std::cos(angle)),
            .right = static_cast<float>(gain * std::sin(angle))};
}

} // namespace clavo
