// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace clavo
{

/// The recipe of one key stroke. Levels are linear and relative: a stroke is normalised after
/// saturation.
struct SwitchProfile {
    /// One resonance of the switch body.
    struct Mode {
        double ratio = 1; // Frequency as a multiple of `body`.
        double gain = 0;
        double decay = 0; // Time constant in seconds.
    };

    double body = 0; // Hz.
    std::vector<Mode> modes;
    double click = 0;       // High-passed noise at the impact.
    double clickTone = 0;   // Its cut-off, Hz.
    double clavo = 0;       // Low-passed noise thud at the impact.
    double clavoCutoff = 0; // Its cut-off, Hz.
    double jacket = 0;      // Housing noise and ping; 0 switches both off.
    double bump = 0;        // Tactile bump before the impact; above 0 the impact comes at 6 ms.
    double rattle = 0;      // Stabiliser partials of the large keys, press only.
    double length = 0;      // Seconds of a normal key's press.
    double releaseGain = 0; // Peak of a release relative to a press.
    double drive = 1;       // Saturation; above 0.
};

/// A short, bright, pure click: one detent of the scroll wheel.
[[nodiscard]] const SwitchProfile& scrollTickProfile();

} // namespace clavo
