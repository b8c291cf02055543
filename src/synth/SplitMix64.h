// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace clavo
{

/// The SplitMix64 generator. Any seed is valid; the sequence is the same on every machine.
struct SplitMix64 {
    static constexpr std::uint64_t increment = 0x9e3779b97f4a7c15;

    std::uint64_t state = 0;

    constexpr std::uint64_t next()
    {
        state += increment;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }

    /// One step; uniform in [0, 1).
    constexpr double uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }

    /// One step; uniform in [−1, 1).
    constexpr double noise() { return 2 * uniform() - 1; }
};

} // namespace clavo
