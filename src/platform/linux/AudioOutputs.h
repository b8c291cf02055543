// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

#include <memory>

namespace clavo
{

/// The output of this desktop: PipeWire, PulseAudio where there is no PipeWire, silence where there
/// is neither. Two variables of the environment change that: CLAVO_AUDIO ("pipewire", "pulse" or
/// "none") allows one alone, CLAVO_QUANTUM (16 … 8192) is the period wished for in frames at 44,100
/// per second, 128 if not set.
[[nodiscard]] std::unique_ptr<AudioOutput> makeAudioOutput();

} // namespace clavo
