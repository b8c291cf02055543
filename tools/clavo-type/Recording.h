// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-type/Rhythm.h"
#include "synth/SoundBank.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>

namespace clavo
{

/// Renders the events into a WAV file, faster than real time: stereo, 24 bits, 44,100 frames per
/// second, from the first event until the last sound is over. Calls `progress` with the number of
/// events done; an exception it throws ends the recording.
///
/// Throws std::runtime_error if the file cannot be written or would be longer than a WAV file can
/// be. The file is replaced when the recording is complete, and left untouched on failure.
void record(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
            const std::filesystem::path& file, const std::function<void(std::size_t)>& progress);

} // namespace clavo
