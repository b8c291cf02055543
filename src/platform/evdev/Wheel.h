// SPDX-License-Identifier: MIT
#pragma once

namespace clavo::evdev
{

/// The detents of one wheel. A wheel with fine steps reports each movement twice: in steps of 1/120
/// detent and in whole detents. The whole detents are then ignored.
class Wheel
{
public:
    explicit Wheel(bool hasFineSteps) : m_hasFineSteps(hasFineSteps) {}

    /// The detents of one report, in either direction; at most ten, since larger reports are not
    /// turned by hand.
    [[nodiscard]] int turnedDetents(int detents) const;
    [[nodiscard]] int turnedSteps(int steps);

private:
    bool m_hasFineSteps = false;
    int m_rest = 0; // Steps of an incomplete detent; negative when downwards.
};

} // namespace clavo::evdev
