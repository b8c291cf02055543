// SPDX-License-Identifier: MIT
#pragma once

namespace clavo::evdev
{

/// The detents of one wheel. A wheel that reports fine steps reports each movement twice: in steps
/// of 1/120 detent and in whole detents, which are then left out.
class Wheel
{
public:
    explicit Wheel(bool hasFineSteps) : m_hasFineSteps(hasFineSteps) {}

    /// How many detents the wheel has turned, whichever way. No report stands for more than ten:
    /// no hand turns a wheel further between two.
    [[nodiscard]] int turnedDetents(int detents) const;
    [[nodiscard]] int turnedSteps(int steps);

private:
    bool m_hasFineSteps = false;
    int m_rest = 0; // Steps of a detent that is not complete; negative ones downwards.
};

} // namespace clavo::evdev
