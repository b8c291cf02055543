// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "audio/SoundEngine.h"
#include "input/InputMonitor.h"
#include "synth/SoundBank.h"

#include <cstdint>

namespace clavo
{

/// The way of the program from a key to the mixer, with the settings that it has at first: nothing
/// of the user's is read, counted or written. The same seed chooses the same variants of sounds.
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
