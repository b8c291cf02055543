// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

namespace clavo
{

/// What one key sound measures. All 0 for silence.
struct SoundFigures {
    double level = 0;    // The peak in dB of full scale.
    double crest = 0;    // The peak above the mean level of 60 ms, in dB.
    double centroid = 0; // The mean frequency of 20 ms by power in Hz, up to 16 kHz.
    double t20 = 0;      // Seconds until all energy but a hundredth is past,
    double t60 = 0;      // and all but a millionth.
    double length = 0;   // Seconds until the level falls 40 dB below its highest for good.
};

/// Measures mono sound at 44,100 per second: all but the length from its loudest hit on, which
/// begins a millisecond before the loudest sample. The level is that of windows of 10 ms.
[[nodiscard]] SoundFigures figuresOf(std::span<const float> samples);

/// The energy of a sound's first 50 ms in the 20 third-octave bands from 100 Hz to 8 kHz, in dB of
/// the whole of them.
[[nodiscard]] std::vector<double> bandLevels(std::span<const float> samples);

} // namespace clavo
