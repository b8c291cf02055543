// SPDX-License-Identifier: MIT
#include "clavo-packs/KeyRendering.h"

#include "synth/SplitMix64.h"
#include "synth/SwitchSynth.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

namespace clavo
{
namespace
{

constexpr double sampleRate = 44100;

double decibels(double level)
{
    return std::pow(10, level / 20);
}

/// Random deviations, bell-shaped enough and never far out.
class Deviation
{
public:
    explicit Deviation(std::uint64_t seed) : m_random{seed} {}

    /// Triangular in −1 … 1.
    double triangular()
    {
        const double first = m_random.uniform();
        const double second = m_random.uniform();
        return first + second - 1;
    }

    /// The same with a standard deviation of 1.
    double normal() { return triangular() / 0.408; }

private:
    SplitMix64 m_random;
};

void varyProfile(SwitchProfile& profile, Deviation& deviation, double scale)
{
    for (SwitchProfile::Mode& mode : profile.modes) {
        mode.ratio *= 1 + 0.02 * scale * deviation.triangular();
        mode.gain *= decibels(3 * scale * deviation.normal());
        mode.decay *= std::exp2(0.30 * scale * deviation.normal());
    }
    for (double* const level :
         {&profile.click, &profile.clavo, &profile.jacket, &profile.bump, &profile.rattle})
        *level *= decibels(3 * scale * deviation.normal());
    for (double* const cutoff : {&profile.clickTone, &profile.clavoCutoff})
        *cutoff *= std::exp2(0.25 * scale * deviation.normal());
}

/// A stroke as one key of the keyboard makes it.
struct KeyStroke {
    Recipe::Stroke events;
    double level = 1;
};

KeyStroke varied(Recipe::Stroke events, const Recipe& recipe, std::int64_t scancode, bool release)
{
    const double scale = recipe.keyscale;
    const std::uint64_t seed =
        recipe.packIndex * 1000003 + static_cast<std::uint64_t>(scancode) * 7919;
    const double body = std::exp2(0.04 * scale * Deviation(seed).normal());
    Deviation deviation(seed + 1 + (release ? 104729 : 0));
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].profile.body *= body;
        varyProfile(events[i].profile, deviation, scale);
        if (i > 0) {
            events[i].offset *= 1 + 0.25 * scale * deviation.normal();
            events[i].gain *= decibels(2.5 * scale * deviation.normal());
        }
    }
    const double level = std::clamp(deviation.normal(), -1.5, 1.5);
    return {std::move(events), decibels((release ? 2.2 : 1.6) * level)};
}

/// The group of keys whose stroke a recipe describes together.
std::string groupOf(KeySlot slot)
{
    switch (slot) {
    case KeySlot::space:
        return "space";
    case KeySlot::enter:
        return "enter";
    case KeySlot::backspace:
        return "backspace";
    default:
        return "row";
    }
}

/// All events of a stroke, each at its time. The earliest starts at 0.
std::vector<double> mixed(const Recipe::Stroke& events, const KeyInfo& key, bool release)
{
    double earliest = 0;
    for (const Recipe::Event& event : events)
        earliest = std::min(earliest, event.offset);

    std::vector<double> sum;
    std::int64_t variant = key.scancode % 5;
    for (const Recipe::Event& event : events) {
        const auto samples = SwitchSynth::render(event.profile, key.slot, release, variant);
        const auto start =
            static_cast<std::size_t>(std::llround((event.offset - earliest) * sampleRate));
        sum.resize(std::max(sum.size(), start + samples.size()));
        for (std::size_t i = 0; i < samples.size(); ++i)
            sum[start + i] += event.gain * static_cast<double>(samples[i]);
        variant = (variant + 2) % 5;
    }
    return sum;
}

/// The samples scaled to a peak, as 24-bit numbers. Those need no dither: their steps lie below
/// what any output can show, and a tail that has died away stays silent.
std::vector<std::int32_t> quantised(const std::vector<double>& samples, double targetPeak)
{
    double peak = 0;
    for (const double sample : samples)
        peak = std::max(peak, std::abs(sample));
    const double scale = peak > 0 ? targetPeak / peak * 0x1p23 : 0;
    std::vector<std::int32_t> numbers;
    numbers.reserve(samples.size());
    for (const double sample : samples)
        numbers.push_back(static_cast<std::int32_t>(std::lround(sample * scale)));
    return numbers;
}

/// Without the zeros at the start, and with a single one at the end.
std::vector<std::int32_t> trimmed(const std::vector<std::int32_t>& samples)
{
    const auto sounds = [](std::int32_t sample) { return sample != 0; };
    const auto first = std::ranges::find_if(samples, sounds);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), sounds).base();
    if (first == samples.end())
        return {0};
    std::vector<std::int32_t> kept(first, last);
    kept.push_back(0);
    return kept;
}

} // namespace

std::vector<std::int32_t> renderKey(const Recipe& recipe, const KeyInfo& key, bool release)
{
    const std::string group = groupOf(key.slot);
    const double headroom = group == "row" ? recipe.headroom : recipe.largeHeadroom;
    const KeyStroke stroke =
        varied(recipe.strokes.at(release ? group + "-r" : group), recipe, key.scancode, release);
    const double peak = std::min(0.97, 0.9 * decibels(headroom) *
                                           (release ? recipe.releaseGain : 1) * stroke.level);
    return trimmed(quantised(mixed(stroke.events, key, release), peak));
}

} // namespace clavo
