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

/// A key at a time since the first one.
struct KeyEvent {
    std::chrono::microseconds time{};
    InputMonitor::Key key;

    bool operator==(const KeyEvent&) const = default;
};

/// The events that type the strokes, in the order of their times, at a mean tempo in words of five
/// characters a minute. A character that takes shift has it held by the other hand, through a run
/// of such characters.

/// Every key after the same time.
[[nodiscard]] std::vector<KeyEvent> evenRhythm(std::span<const Keystroke> strokes, double wpm);

/// As people type: hands that take turns are fast and a finger that has to move is slow, there are
/// pauses between words and longer ones after sentences, the tempo drifts, and a key often goes
/// down before the last one is up. The same seed is the same rhythm.
[[nodiscard]] std::vector<KeyEvent> humanRhythm(std::span<const Keystroke> strokes, double wpm,
                                                std::uint64_t seed);

} // namespace clavo
