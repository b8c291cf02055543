// SPDX-License-Identifier: MIT
#include "packs/PlaybackRate.h"

#include <algorithm>
#include <cstdint>

namespace clavo
{
namespace
{

struct Position {
    std::int32_t sample;
    double fraction;
};

Position positionOf(std::int32_t index, double rate)
{
    const double position = rate * index;
    const auto sample = static_cast<std::int32_t>(position);
    return {sample, position - sample};
}

/// The number of output samples from `index` on of which each reads the recording exactly one
/// sample after the one before. At rates near 1 a run has dozens of samples, and its loop
/// vectorises.
std::int32_t runLength(std::int32_t index, const Position& first, double rate)
{
    const double steps = rate < 1 ? first.fraction / (1 - rate) : (1 - first.fraction) / (rate - 1);
    auto length = static_cast<std::int32_t>(std::min(steps, 1e6)) + 1;
    // The estimate may be too long by one, or by rounding.
    while (length > 1 && positionOf(index + length - 1, rate).sample != first.sample + length - 1)
        --length;
    return length;
}

/// Interpolates the samples of one run, which starts at `sample` of the recording.
void replayRun(const float* recording, std::int32_t index, std::int32_t sample, double rate,
               std::span<float> out)
{
    const float* const here = recording + sample;
    const float* const next = here + 1;
    const auto length = static_cast<std::int32_t>(out.size());
    float* const to = out.data();
    for (std::int32_t i = 0; i < length; ++i) {
        const auto fraction = static_cast<float>(rate * (index + i) - (sample + i));
        to[i] = here[i] + (next[i] - here[i]) * fraction;
    }
}

} // namespace

void replay(std::span<const float> samples, double rate, std::span<float> replayed)
{
    if (rate == 1.0) {
        std::ranges::copy(samples, replayed.begin());
        return;
    }
    const auto count = static_cast<std::int32_t>(samples.size());
    const auto length = static_cast<std::int32_t>(replayed.size());
    std::int32_t index = 0;
    while (index < length) {
        const Position first = positionOf(index, rate);
        if (first.sample + 1 >= count)
            break;
        const auto run =
            std::min({runLength(index, first, rate), length - index, count - 1 - first.sample});
        replayRun(samples.data(), index, first.sample, rate,
                  replayed.subspan(static_cast<std::size_t>(index), static_cast<std::size_t>(run)));
        index += run;
    }
    // Silence follows the last sample.
    for (; index < length; ++index) {
        const Position last = positionOf(index, rate);
        const float sample = samples[static_cast<std::size_t>(last.sample)];
        replayed[static_cast<std::size_t>(index)] =
            sample + (0 - sample) * static_cast<float>(last.fraction);
    }
}

} // namespace clavo
