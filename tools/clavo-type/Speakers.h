// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "clavo-type/Rhythm.h"
#include "synth/SoundBank.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace clavo
{

/// Plays the events at their times. Returns after the end of the last sound. Calls `progress` with
/// the number of events done.
///
/// Throws std::runtime_error if no sound server answers within the patience. Needs the application
/// object, whose main loop runs meanwhile. Thread: main.
void play(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
          AudioOutput& output, const std::function<void(std::size_t)>& progress,
          std::chrono::milliseconds patience = std::chrono::seconds(3));

} // namespace clavo
