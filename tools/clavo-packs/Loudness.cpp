// SPDX-License-Identifier: MIT
#include "clavo-packs/Loudness.h"

#include "synth/AudioBuffer.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <numeric>
#include <vector>

namespace clavo
{
namespace
{

constexpr double rate = samplesPerSecond;
constexpr std::size_t blockFrames = 17640; // 400 ms,
constexpr std::size_t blockStep = 4410;    // three quarters of which overlap.
constexpr double absoluteGate = -70;
constexpr double relativeGate = -10;

/// A second-order filter in transposed direct form II, with a0 = 1.
struct Biquad {
    double b0 = 0;
    double b1 = 0;
    double b2 = 0;
    double a1 = 0;
    double a2 = 0;
    double first = 0;
    double second = 0;

    double filtered(double x)
    {
        const double y = b0 * x + first;
        first = b1 * x - a1 * y + second;
        second = b2 * x - a2 * y;
        return y;
    }
};

/// Tables 1 and 2 of the standard give the filters for 48 kHz only. These are the analogue filters
/// whose bilinear transform at 48 kHz has the coefficients of the tables.
///
/// The first stage: a high shelf of 4 dB, for the effect of the head.
Biquad shelf()
{
    const double k = std::tan(std::numbers::pi * 1681.974450955533 / rate);
    const double q = 0.7071752369554196;
    const double high = std::pow(10, 3.999843853973347 / 20);
    const double band = std::pow(high, 0.4996667741545416);
    const double a0 = 1 + k / q + k * k;
    return {.b0 = (high + band * k / q + k * k) / a0,
            .b1 = 2 * (k * k - high) / a0,
            .b2 = (high - band * k / q + k * k) / a0,
            .a1 = 2 * (k * k - 1) / a0,
            .a2 = (1 - k / q + k * k) / a0};
}

/// The second stage: a high-pass at 38 Hz.
Biquad highPass()
{
    const double k = std::tan(std::numbers::pi * 38.13547087602444 / rate);
    const double q = 0.5003270373238773;
    const double a0 = 1 + k / q + k * k;
    return {.b0 = 1, .b1 = -2, .b2 = 1, .a1 = 2 * (k * k - 1) / a0, .a2 = (1 - k / q + k * k) / a0};
}

/// The mean square of every block, K-weighted.
std::vector<double> blockPowers(std::span<const float> samples)
{
    std::vector<double> energies{0}; // For each sample, the energy of all samples before it.
    energies.reserve(samples.size() + 1);
    Biquad head = shelf();
    Biquad lows = highPass();
    for (const float sample : samples) {
        const double weighted = lows.filtered(head.filtered(static_cast<double>(sample)));
        energies.push_back(energies.back() + weighted * weighted);
    }
    std::vector<double> powers;
    for (std::size_t start = 0; start + blockFrames <= samples.size(); start += blockStep)
        powers.push_back((energies[start + blockFrames] - energies[start]) / blockFrames);
    return powers;
}

double loudnessOf(double power)
{
    return -0.691 + 10 * std::log10(power);
}

/// The loudness of the mean energy of all blocks that are louder than the gate.
double gatedLoudness(std::vector<double> powers, double gate)
{
    std::erase_if(powers, [gate](double power) { return !(loudnessOf(power) > gate); });
    if (powers.empty())
        return -std::numeric_limits<double>::infinity();
    const double sum = std::accumulate(powers.begin(), powers.end(), 0.0);
    return loudnessOf(sum / static_cast<double>(powers.size()));
}

} // namespace

double integratedLoudness(std::span<const float> samples)
{
    const auto powers = blockPowers(samples);
    const double gate = gatedLoudness(powers, absoluteGate) + relativeGate;
    return gatedLoudness(powers, std::max(gate, absoluteGate));
}

} // namespace clavo
