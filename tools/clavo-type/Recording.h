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
/// second, from the first event to the end of the last sound. Calls `progress` with the number of
/// events done; an exception it throws ends the recording.
///
/// `-` is the standard output. A pipe is written into. Any other file is replaced when the
/// recording is complete, and untouched on failure. Throws std::runtime_error if the file cannot be
/// written, is a folder or a device, or would be longer than a WAV file can be.
void record(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
            const std::filesystem::path& file, const std::function<void(std::size_t)>& progress);

} // namespace clavo
