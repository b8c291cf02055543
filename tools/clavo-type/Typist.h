// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "audio/SoundEngine.h"
#include "input/InputMonitor.h"
#include "synth/SoundBank.h"

#include <cstdint>

namespace clavo
{

/// The program's path from a key to the mixer, with the default settings. Reads no settings and
/// writes no statistics. The same seed selects the same variants of sounds.
class Typist
{
public:
    /// The output must outlive it.
    Typist(AudioOutput& output, SoundBank bank, std::uint64_t seed);

    void type(const InputMonitor::Key& key);

private:
    Settings m_settings;
    SoundEngine m_sound;
};

/// The length of the longest sound, in frames.
[[nodiscard]] std::size_t longestSound(const SoundBank& bank);

} // namespace clavo
