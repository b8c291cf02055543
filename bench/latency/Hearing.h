// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Recording.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace clavo::latency
{

/// What counts as a sound.
struct Listening {
    float floor = 0; // Nothing up to this level is a sound.

    /// A server that was held up renders periods later than their time. An event of the meantime
    /// sounds in one of those, by its time before the event, but by no more than this.
    nanoseconds early{};
};

/// The time from an event to its sound: to the first sample before the next event that is above the
/// floor and twice as loud as everything in the 5 ms before the event. Nothing when no sample is.
[[nodiscard]] std::optional<nanoseconds> latency(const Recording& recording, Moment event,
                                                 Moment next, const Listening& listening);

struct Distribution {
    nanoseconds median{};
    nanoseconds percentile99{};
    nanoseconds maximum{};
};

/// Of at least one value.
[[nodiscard]] Distribution distribution(std::vector<nanoseconds> values);

/// How many pulses of one height sound from this frame on. Pulses that begin together add up; the
/// others must not overlap.
[[nodiscard]] std::size_t pulses(const Recording& recording, std::size_t first, float height);

} // namespace clavo::latency
