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

/// Renders the events into a WAV file, as fast as it goes: stereo, 24 bits, 44,100 frames per
/// second, from the first event until the last sound is over. `told` hears how many events are
/// done; what it throws ends the recording.
///
/// Throws std::runtime_error where the file cannot be written or would be longer than a WAV file
/// can be. The file appears when it is whole; until then, and after a failure, what was there is
/// there.
void record(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
            const std::filesystem::path& file, const std::function<void(std::size_t)>& told);

} // namespace clavo
