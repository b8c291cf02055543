// SPDX-License-Identifier: MIT
#include "latency/Hearing.h"

#include <algorithm>
#include <cmath>

namespace clavo::latency
{
namespace
{

using namespace std::chrono_literals;

constexpr auto before = 5ms;

} // namespace

std::optional<nanoseconds> latency(const Recording& recording, Moment event, Moment next,
                                   const Listening& listening)
{
    const auto first = recording.frameAt(event - listening.early);
    const auto last = recording.frameAt(next - listening.early);
    const auto background =
        recording.peak(recording.frameAt(event - listening.early - before), first);
    const auto threshold = std::max(listening.floor, 2 * background);
    for (auto frame = first; frame < last; ++frame) {
        if (recording.level(frame) > threshold)
            return recording.timeOf(frame) - event;
    }
    return {};
}

Distribution distribution(std::vector<nanoseconds> values)
{
    std::ranges::sort(values);
    // The smallest value that this share of all values does not exceed.
    const auto atMost = [&](double share) {
        const auto rank = std::ceil(share * static_cast<double>(values.size()));
        return values[static_cast<std::size_t>(rank) - 1];
    };
    return {.median = atMost(0.5), .percentile99 = atMost(0.99), .maximum = values.back()};
}

std::size_t pulses(const Recording& recording, std::size_t first, float height)
{
    std::size_t count = 0;
    for (auto frame = first; frame < recording.frames(); ++frame) {
        float peak = 0;
        while (frame < recording.frames() && recording.level(frame) > height / 4)
            peak = std::max(peak, recording.level(frame++));
        count += static_cast<std::size_t>(std::lround(peak / height));
    }
    return count;
}

} // namespace clavo::latency
