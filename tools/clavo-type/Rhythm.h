// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-type/Keystrokes.h"
#include "input/InputMonitor.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace clavo
{

/// A key going down or up, at a time after the first event.
struct KeyEvent {
    std::chrono::microseconds time{};
    InputMonitor::Key key;

    bool operator==(const KeyEvent&) const = default;
};

// The events that type the strokes, in the order of their times, at a mean tempo in words of five
// characters a minute. The other hand holds shift for a run of characters that need it.

/// Every key goes down at the same interval.
[[nodiscard]] std::vector<KeyEvent> evenRhythm(std::span<const Keystroke> strokes, double wpm);

/// The rhythm of a person: alternating hands are fast and a finger that moves to another key is
/// slow, there are pauses between words and longer ones after sentences, the tempo drifts, and a
/// key often goes down before the previous one is up. The same seed gives the same rhythm.
[[nodiscard]] std::vector<KeyEvent> humanRhythm(std::span<const Keystroke> strokes, double wpm,
                                                std::uint64_t seed);

} // namespace clavo
