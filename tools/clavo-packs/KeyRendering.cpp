// SPDX-License-Identifier: MIT
#include "clavo-packs/KeyRendering.h"

#include "synth/AudioBuffer.h"
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

constexpr double sampleRate = samplesPerSecond;
constexpr std::size_t longestLead = 794; // 18 ms.

double decibels(double level)
{
    return std::pow(10, level / 20);
}

/// Random deviations of a bounded distribution that is close to normal.
class Deviation
{
public:
    explicit Deviation(std::uint64_t seed) : m_random{seed} {}

    /// Triangular, from −1 to 1.
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

/// The stroke of one key.
struct KeyStroke {
    Recipe::Stroke events;
    double level = 0; // In dB.
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
    // The limit reduces the spread from 1.75 dB to 1.6.
    const double level = std::clamp(deviation.normal(), -1.5, 1.5);
    return {std::move(events), (release ? 2.2 : 1.75) * level};
}

/// The group of keys for which a recipe describes one stroke.
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
std::vector<float> mixed(const Recipe::Stroke& events, const KeyInfo& key, bool release)
{
    double earliest = 0;
    for (const Recipe::Event& event : events)
        earliest = std::min(earliest, event.offset);

    std::vector<float> sum;
    std::int64_t variant = key.scancode % 5;
    for (const Recipe::Event& event : events) {
        const auto samples = SwitchSynth::render(event.profile, key.slot, release, variant);
        const auto start =
            static_cast<std::size_t>(std::llround((event.offset - earliest) * sampleRate));
        sum.resize(std::max(sum.size(), start + samples.size()));
        for (std::size_t i = 0; i < samples.size(); ++i)
            sum[start + i] += static_cast<float>(event.gain) * samples[i];
        variant = (variant + 2) % 5;
    }
    return sum;
}

std::size_t loudestOf(const std::vector<float>& samples)
{
    const auto loudest =
        std::ranges::max_element(samples, {}, [](float sample) { return std::abs(sample); });
    return static_cast<std::size_t>(loudest - samples.begin());
}

/// A press seems to lag when its loudest sample comes late. The first hit of such a stroke moves
/// closer to the second.
std::vector<float> promptPress(Recipe::Stroke events, const KeyInfo& key)
{
    auto samples = mixed(events, key, false);
    while (events.back().offset != 0 && loudestOf(samples) > longestLead) {
        const double late = static_cast<double>(loudestOf(samples) - longestLead) / sampleRate;
        const double offset = events.back().offset;
        events.back().offset =
            std::copysign(std::max(0.0, std::abs(offset) - late - 1 / sampleRate), offset);
        samples = mixed(events, key, false);
    }
    return samples;
}

void scaleToPeak(std::vector<float>& samples, double target)
{
    if (samples.empty())
        return;
    const float peak = std::abs(samples[loudestOf(samples)]);
    if (!(peak > 0))
        return;
    const auto scale = static_cast<float>(target) / peak;
    for (float& sample : samples)
        sample *= scale;
}

} // namespace

std::vector<float> renderKey(const Recipe& recipe, const KeyInfo& key, bool release)
{
    const std::string group = groupOf(key.slot);
    const KeyStroke stroke =
        varied(recipe.strokes.at(release ? group + "-r" : group), recipe, key.scancode, release);
    auto samples = release ? mixed(stroke.events, key, true) : promptPress(stroke.events, key);
    // A large key does not vary: it is the only one of its kind, so no other key differs from it.
    const double variation = group == "row" ? stroke.level : 0;
    scaleToPeak(samples, decibels(recipe.levels.at(group) + (release ? recipe.releaseLevel : 0) +
                                  variation));
    return samples;
}

} // namespace clavo
