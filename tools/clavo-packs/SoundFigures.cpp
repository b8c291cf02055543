// SPDX-License-Identifier: MIT
#include "clavo-packs/SoundFigures.h"

#include "synth/AudioBuffer.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <numeric>

namespace clavo
{
namespace
{

constexpr double rate = samplesPerSecond;

std::size_t loudestOf(std::span<const float> samples)
{
    const auto loudest =
        std::ranges::max_element(samples, {}, [](float sample) { return std::abs(sample); });
    return static_cast<std::size_t>(loudest - samples.begin());
}

double decibelsOfPower(double power)
{
    return 10 * std::log10(power);
}

/// The power of `frames` samples, filled up with silence, in the bins 0, rate / frames,
/// 2 · rate / frames … below `highest` Hz.
std::vector<double> powerSpectrum(std::span<const float> samples, std::size_t frames,
                                  double highest)
{
    const auto present = samples.first(std::min(frames, samples.size()));
    const auto bins = static_cast<std::size_t>(highest / rate * static_cast<double>(frames));
    std::vector<double> powers;
    powers.reserve(bins);
    for (std::size_t bin = 0; bin < bins; ++bin) {
        const auto step = std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(bin) /
                                              static_cast<double>(frames));
        std::complex<double> sum;
        std::complex<double> turn = 1;
        for (const float sample : present) {
            sum += turn * static_cast<double>(sample);
            turn *= step;
        }
        powers.push_back(std::norm(sum));
    }
    return powers;
}

double centroidOf(std::span<const float> hit)
{
    constexpr std::size_t frames = 882;
    const auto powers = powerSpectrum(hit, frames, 16000);
    double weighted = 0;
    for (std::size_t bin = 0; bin < powers.size(); ++bin)
        weighted += powers[bin] * static_cast<double>(bin) * rate / frames;
    return weighted / std::accumulate(powers.begin(), powers.end(), 0.0);
}

/// The energy from each sample on: backward integration after Schroeder, "New Method of Measuring
/// Reverberation Time", 1965.
std::vector<double> energyDecay(std::span<const float> samples)
{
    std::vector<double> decay(samples.size());
    double energy = 0;
    for (std::size_t i = samples.size(); i-- > 0;) {
        energy += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
        decay[i] = energy;
    }
    return decay;
}

double secondsToFall(const std::vector<double>& decay, double share)
{
    const auto reached = std::ranges::find_if(
        decay, [limit = decay.front() * share](double energy) { return energy < limit; });
    return static_cast<double>(reached - decay.begin()) / rate;
}

double secondsAbove(const std::vector<double>& decay, double share)
{
    constexpr std::size_t window = 441;
    const auto energyFrom = [&](std::size_t start) {
        const std::size_t end = start + window;
        return decay[start] - (end < decay.size() ? decay[end] : 0);
    };
    double highest = 0;
    for (std::size_t start = 0; start < decay.size(); ++start)
        highest = std::max(highest, energyFrom(start));
    std::size_t last = decay.size();
    while (last > 0 && energyFrom(last - 1) < highest * share)
        --last;
    return static_cast<double>(last) / rate;
}

double crestOf(std::span<const float> hit, double peak)
{
    constexpr std::size_t frames = 2646;
    double energy = 0;
    for (const float sample : hit.first(std::min(frames, hit.size())))
        energy += static_cast<double>(sample) * static_cast<double>(sample);
    return decibelsOfPower(peak * peak / (energy / frames));
}

} // namespace

SoundFigures figuresOf(std::span<const float> samples)
{
    if (std::ranges::all_of(samples, [](float sample) { return sample == 0; }))
        return {};
    constexpr std::size_t rise = 44; // 1 ms.
    const std::size_t loudest = loudestOf(samples);
    const auto peak = static_cast<double>(std::abs(samples[loudest]));
    const auto hit = samples.subspan(loudest - std::min(loudest, rise));
    const auto decay = energyDecay(hit);
    return {.level = decibelsOfPower(peak * peak),
            .crest = crestOf(hit, peak),
            .centroid = centroidOf(hit),
            .t20 = secondsToFall(decay, 1e-2),
            .t60 = secondsToFall(decay, 1e-6),
            .length = secondsAbove(energyDecay(samples), 1e-4)};
}

std::vector<double> bandLevels(std::span<const float> samples)
{
    constexpr std::size_t frames = 2205;
    constexpr int lowestBand = 20; // Band n lies around 10^(n/10) Hz.
    constexpr int highestBand = 39;
    const double lowestEdge = std::pow(10, (lowestBand - 0.5) / 10);
    const double highestEdge = std::pow(10, (highestBand + 0.5) / 10);

    const auto powers = powerSpectrum(samples, frames, highestEdge);
    std::vector<double> bands(highestBand - lowestBand + 1, 0);
    for (std::size_t bin = 0; bin < powers.size(); ++bin) {
        const double frequency = static_cast<double>(bin) * rate / frames;
        if (frequency < lowestEdge)
            continue;
        const auto band = static_cast<std::size_t>(10 * std::log10(frequency / lowestEdge));
        bands[std::min(band, bands.size() - 1)] += powers[bin];
    }
    const double whole = std::accumulate(bands.begin(), bands.end(), 0.0);
    for (double& band : bands)
        band = decibelsOfPower(band / whole);
    return bands;
}

} // namespace clavo
