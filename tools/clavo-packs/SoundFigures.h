// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

namespace clavo
{

/// The figures of one key sound. All 0 for silence.
struct SoundFigures {
    double level = 0;    // The peak in dB of full scale.
    double crest = 0;    // The peak above the mean level of 60 ms, in dB.
    double centroid = 0; // The mean frequency of 20 ms by power in Hz, up to 16 kHz.
    double t20 = 0;      // Seconds until a hundredth of the energy is left,
    double t60 = 0;      // and until a millionth is left.
    double length = 0;   // Seconds until the level stays 40 dB below its highest.
};

/// Measures mono sound at 44,100 per second. All figures but the length start at the loudest hit,
/// which begins a millisecond before the loudest sample. The length uses the level of windows of
/// 10 ms.
[[nodiscard]] SoundFigures figuresOf(std::span<const float> samples);

/// The energy of a sound's first 50 ms in each of the 20 third-octave bands from 100 Hz to 8 kHz,
/// in dB relative to their sum.
[[nodiscard]] std::vector<double> bandLevels(std::span<const float> samples);

} // namespace clavo
