// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

// How loud each kind of sound is played: linear gains below the volume.
inline constexpr float pressGain = 1.0F;
inline constexpr float releaseGain = 0.8F;
inline constexpr float mouseGain = 0.7F;
inline constexpr float scrollGain = 0.35F;

/// How far from the middle a sound is played whose place is at the edge of the keyboard or of the
/// screen; 1 would be one loudspeaker alone.
inline constexpr float panWidth = 0.6F;

} // namespace clavo
