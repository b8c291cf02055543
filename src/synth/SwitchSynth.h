// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeySlot.h"

#include <cstdint>
#include <vector>

namespace clavo
{

/// The parameters of one key stroke. Levels are linear and relative, because a stroke is normalised
/// after saturation.
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

/// Renders key strokes and mouse clicks as mono samples at 44,100 Hz. Deterministic: equal inputs,
/// equal samples.
namespace clavo::SwitchSynth
{

/// The stroke of one key. `variant` is 0 or more (0 to 4 are used); a negative one is fatal.
[[nodiscard]] std::vector<float> render(const SwitchProfile& profile, KeySlot slot, bool release,
                                        std::int64_t variant);

/// A mouse button's press (30 ms) or release (22 ms). `variant` as for render().
[[nodiscard]] std::vector<float> renderMouse(bool release, std::int64_t variant);

/// In place: saturates with tanh, scales to a peak of 0.9 × gain and fades the last 264 samples to
/// exactly 0. `drive` is above 0. Silence stays silence.
void finish(std::vector<float>& samples, double drive, double gain);

} // namespace clavo::SwitchSynth
