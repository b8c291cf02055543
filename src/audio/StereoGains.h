// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// The linear gain of each side.
struct StereoGains {
    float left = 0;
    float right = 0;
};

/// Places a mono sound between the loudspeakers at equal power: −3 dB on each side at pan 0, one
/// side alone at −1 (left) and +1 (right). A pan beyond counts as the nearer end. What is not a
/// number, or an infinite gain, gives silence.
[[nodiscard]] StereoGains stereoGains(float pan, float gain);

} // namespace clavo
