// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

// How loud each kind of sound is played: linear gains below the volume.
inline constexpr float pressGain = 1.0F;
inline constexpr float releaseGain = 0.8F;
inline constexpr float mouseGain = 0.7F;
inline constexpr float scrollGain = 0.35F;

/// The pan of a sound at the edge of the keyboard or of the screen; at 1 only one loudspeaker would
/// play.
inline constexpr float panWidth = 0.6F;

/// The linear gain of each side.
struct StereoGains {
    float left = 0;
    float right = 0;
};

/// Places a mono sound between the loudspeakers at equal power: −3 dB on each side at pan 0, one
/// side alone at −1 (left) and +1 (right); a pan outside is clamped. NaN or an infinite gain gives
/// silence.
[[nodiscard]] StereoGains stereoGains(float pan, float gain);

} // namespace clavo
