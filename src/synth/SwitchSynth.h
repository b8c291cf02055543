// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeySlot.h"
#include "synth/SwitchProfile.h"

#include <cstdint>
#include <vector>

/// Renders key strokes and mouse clicks as mono samples at 44,100 Hz. Deterministic: equal inputs,
/// equal samples.
namespace clavo::SwitchSynth
{

/// The stroke of one key. `variant` is 0 or more (0 to 4 in use); a negative one is a broken
/// promise and fatal.
[[nodiscard]] std::vector<float> render(const SwitchProfile& profile, KeySlot slot, bool release,
                                        std::int64_t variant);

/// A mouse button going down, or up when `release`: 30 ms or 22 ms. `variant` as for render().
[[nodiscard]] std::vector<float> renderMouse(bool release, std::int64_t variant);

/// Saturates with tanh, scales to a peak of 0.9 × gain and fades the last 264 samples to an exact
/// 0, in place. `drive` is above 0. All zeros stay so.
void finish(std::vector<float>& samples, double drive, double gain);

} // namespace clavo::SwitchSynth
