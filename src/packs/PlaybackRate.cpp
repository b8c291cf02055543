// SPDX-License-Identifier: MIT
#include "packs/PlaybackRate.h"

#include <cstddef>
#include <cstdint>

namespace clavo
{

std::vector<float> atRate(std::span<const float> samples, double rate)
{
    if (rate == 1.0)
        return {samples.begin(), samples.end()};

    std::vector<float> replayed(
        static_cast<std::size_t>(static_cast<double>(samples.size()) / rate));
    for (std::size_t i = 0; i < replayed.size(); ++i) {
        const double position = rate * static_cast<double>(i);
        const auto k = static_cast<std::size_t>(position);
        const auto fraction = static_cast<float>(position - static_cast<double>(k));
        const float next = k + 1 < samples.size() ? samples[k + 1] : 0;
        replayed[i] = samples[k] + (next - samples[k]) * fraction;
    }
    return replayed;
}

} // namespace clavo
