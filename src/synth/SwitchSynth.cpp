// SPDX-License-Identifier: MIT
#include "synth/SwitchSynth.h"

#include "log/Fatal.h"
#include "synth/AudioBuffer.h"
#include "synth/SplitMix64.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace clavo
{

const SwitchProfile& scrollTickProfile()
{
    static const SwitchProfile profile{
        .body = 1400,
        .modes = {{.ratio = 1.0, .gain = 0.5, .decay = 0.002}},
        .click = 0.6,
        .clickTone = 4000,
        .clavo = 0,
        .clavoCutoff = 2000,
        .jacket = 0,
        .bump = 0,
        .rattle = 0,
        .length = 0.02,
        .releaseGain = 0.45,
        .drive = 1.2,
    };
    return profile;
}

namespace SwitchSynth
{
namespace
{

constexpr double rate = samplesPerSecond;
constexpr double twoPi = 2 * std::numbers::pi;

/// exp(−2π·fc / 44100) for the fixed cut-offs.
namespace coefficient
{
constexpr double hz1800 = 0.7737886202446908;
constexpr double hz2200 = 0.7309232001745205;
constexpr double hz2500 = 0.7003397929164054;
constexpr double hz3200 = 0.6338628053060449;
constexpr double hz4500 = 0.5266909380029031;
constexpr double hz5000 = 0.4904758255421935;
} // namespace coefficient

double onePole(double cutoff)
{
    return std::exp(-twoPi * cutoff / rate);
}

/// The integer part of a number of samples.
std::int64_t whole(double samples)
{
    if (!(std::abs(samples) < 0x1p63))
        fatal("a length or a start of a stroke is no number of samples");
    return static_cast<std::int64_t>(samples);
}

SplitMix64 seeded(std::uint64_t offset, std::uint64_t stride, std::int64_t variant)
{
    if (variant < 0)
        fatal("a stroke's variant is negative");
    return {SplitMix64::increment + offset + stride * static_cast<std::uint64_t>(variant)};
}

std::vector<float> silence(std::int64_t count)
{
    if (count < 0)
        fatal("a stroke's length is negative");
    return std::vector<float>(static_cast<std::size_t>(count));
}

bool isLarge(KeySlot slot)
{
    return slot == KeySlot::space || slot == KeySlot::enter || slot == KeySlot::backspace;
}

/// Higher rows sound higher, the long keys lower.
double slotFactor(KeySlot slot)
{
    // In the order of the slots.
    static constexpr std::array<double, allKeySlots.size()> factors{1.12, 1.07, 1.03, 1.0,
                                                                    0.95, 0.7,  0.84, 0.88};
    return factors[static_cast<std::size_t>(slot)];
}

/// A sound under construction. Every component is computed in double precision and added in single.
/// A component that starts at or after the end is skipped and draws nothing from the generator.
class Stroke
{
public:
    Stroke(SplitMix64 random, std::int64_t length) : m_random(random), m_samples(silence(length)) {}

    double uniform() { return m_random.uniform(); }

    void addNoiseBurst(std::int64_t start, double tau, std::int64_t length, double highPass,
                       double gain)
    {
        double y = 0;
        double previous = 0;
        for (std::int64_t i = 0, count = clipped(start, length); i < count; ++i) {
            const double x = std::exp(-(static_cast<double>(i) / rate) / tau) * m_random.noise();
            y = highPass * (y + x - previous);
            previous = x;
            add(start + i, gain * y);
        }
    }

    /// A tone at or above half the sampling rate is skipped in the same way.
    void addPartial(std::int64_t start, double frequency, double tau, std::int64_t length,
                    double gain)
    {
        const std::int64_t count = clipped(start, length);
        if (count < 1 || frequency >= rate / 2)
            return;
        const double phase = twoPi * m_random.uniform();
        const double omega = twoPi * frequency / rate;
        for (std::int64_t i = 0; i < count; ++i) {
            const double t = static_cast<double>(i) / rate;
            add(start + i, gain * std::sin(phase + omega * static_cast<double>(i)) *
                               std::exp(-t / tau) * (1 - std::exp(-t / 0.0003)) * 0.5);
        }
    }

    void addThud(std::int64_t start, double tau, std::int64_t length, double lowPass, double gain)
    {
        double y1 = 0;
        double y2 = 0;
        for (std::int64_t i = 0, count = clipped(start, length); i < count; ++i) {
            const double t = static_cast<double>(i) / rate;
            y1 = lowPass * y1 + (1 - lowPass) * m_random.noise();
            y2 = lowPass * y2 + (1 - lowPass) * y1;
            add(start + i, gain * std::exp(-t / tau) * (1 - std::exp(-t / 0.0004)) * y2 * 6);
        }
    }

    std::vector<float> finished(double drive, double gain)
    {
        finish(m_samples, drive, gain);
        return std::move(m_samples);
    }

private:
    [[nodiscard]] std::int64_t clipped(std::int64_t start, std::int64_t length) const
    {
        return std::min(static_cast<std::int64_t>(m_samples.size()) - start, length);
    }

    void add(std::int64_t index, double value)
    {
        m_samples[static_cast<std::size_t>(index)] += static_cast<float>(value);
    }

    SplitMix64 m_random;
    std::vector<float> m_samples;
};

} // namespace

std::vector<float> render(const SwitchProfile& profile, KeySlot slot, bool release,
                          std::int64_t variant)
{
    const bool large = isLarge(slot);
    const bool bumps = !release && profile.bump > 0;
    const double factor = slotFactor(slot);

    SplitMix64 random = seeded(seedOffset(slot) + (release ? 104729 : 0), 7919, variant);
    const double pitch = 1 + static_cast<double>(variant - 2) * 0.013 + random.noise() * 0.004;
    const double keyPitch = pitch * factor * (release ? 1.22 : 1);
    const double seconds = profile.length * (large ? 1.5 : 1) * (release ? 0.7 : 1);
    const double clickLevel = profile.click * (release ? 0.5 : 1);
    const double thudLevel = profile.clavo * (release ? 0.3 : 1) * (large ? 1.3 : 1);

    Stroke stroke(random, whole(seconds * rate));
    if (bumps)
        stroke.addNoiseBurst(0, 0.0009, 317, coefficient::hz1800, profile.bump * 0.35);

    const double impactTime = bumps ? 0.006 : 0.0006;
    const std::int64_t impact = whole(impactTime * rate);
    stroke.addNoiseBurst(impact, 0.0007, 246, onePole(profile.clickTone), clickLevel);
    stroke.addThud(impact, large ? 0.0154 : 0.011, large ? 4753 : 3395,
                   onePole(profile.clavoCutoff * factor * (release ? 1.5 : 1)), thudLevel);

    for (const SwitchProfile::Mode& mode : profile.modes) {
        const double detune = 1 + 0.01 * (2 * stroke.uniform() - 1);
        const double tau = mode.decay * (large ? 1.35 : 1);
        stroke.addPartial(impact, profile.body * keyPitch * mode.ratio * detune, tau,
                          whole(tau * 7 * rate), mode.gain * (release ? 0.6 : 1));
    }

    if (profile.jacket > 0) {
        const std::int64_t start = whole((release ? impactTime : impactTime + 0.009) * rate);
        const double level = profile.jacket * (release ? 0.45 : 1);
        stroke.addNoiseBurst(start, 0.0005, 176, coefficient::hz3200, level);
        stroke.addPartial(start, 4300 * pitch, 0.004, 1234, level * 0.35);
    }

    if (large && !release) {
        stroke.addNoiseBurst(whole((impactTime + 0.0035) * rate), 0.0008, 282, coefficient::hz2200,
                             clickLevel * 0.45);
        const std::int64_t wire = whole((impactTime + 0.004) * rate);
        stroke.addPartial(wire, 1750 * pitch, 0.018, 5556, profile.rattle);
        stroke.addPartial(wire, 2630 * pitch, 0.012, 3704, profile.rattle * 0.6);
    }

    return stroke.finished(profile.drive, release ? profile.releaseGain : 1);
}

std::vector<float> renderMouse(bool release, std::int64_t variant)
{
    constexpr std::int64_t impact = 17;

    SplitMix64 random = seeded(release ? 15485863 : 0, 6151, variant);
    const double pitch = 1 + static_cast<double>(variant - 2) * 0.02 + random.noise() * 0.006;

    Stroke stroke(random, release ? 970 : 1323);
    stroke.addNoiseBurst(impact, 0.00025, 88, coefficient::hz4500, release ? 0.7 : 1);
    stroke.addPartial(impact, (release ? 6200 : 5400) * pitch, 0.0011, 339, release ? 0.35 : 0.45);

    const double second = (release ? 0.001 : 0.0013) + stroke.uniform() * 0.0003;
    stroke.addNoiseBurst(whole(second * rate), 0.0002, 70, coefficient::hz5000,
                         release ? 0.3 : 0.45);

    stroke.addPartial(impact, (release ? 2937.5 : 2350) * pitch, 0.0022, 679,
                      release ? 0.35 : 0.55);
    stroke.addPartial(impact, (release ? 4875 : 3900) * pitch, 0.0012, 370, 0.25);
    if (!release) {
        stroke.addPartial(impact, 1150 * pitch, 0.003, 926, 0.22);
        stroke.addThud(impact, 0.002, 617, coefficient::hz2500, 0.05);
    }
    return stroke.finished(1.1, release ? 0.6 : 1);
}

void finish(std::vector<float>& samples, double drive, double gain)
{
    const auto k = static_cast<float>(std::tanh(drive));
    const auto singleDrive = static_cast<float>(drive);
    float peak = 0;
    for (float& s : samples) {
        s = std::tanh(s * singleDrive) / k;
        peak = std::max(peak, std::abs(s));
    }
    if (!(peak > 0))
        return;

    const float scale = static_cast<float>(gain * 0.9) / peak;
    const std::size_t fade = std::min<std::size_t>(samples.size(), 264);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t remaining = samples.size() - 1 - i;
        samples[i] *= scale;
        if (remaining < fade)
            samples[i] = samples[i] * static_cast<float>(remaining) / static_cast<float>(fade);
    }
}

} // namespace SwitchSynth
} // namespace clavo
