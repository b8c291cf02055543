// SPDX-License-Identifier: MIT
#include "clavo-packs/PackRendering.h"

#include "audio/SoundLevels.h"
#include "clavo-packs/KeyRendering.h"
#include "clavo-packs/Loudness.h"
#include "keyboard/KeyLayout.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace clavo
{
namespace
{

constexpr float highestPeak = 0.97F;

constexpr std::size_t keyInterval = 5292; // 120 ms: a hundred words a minute,
constexpr std::size_t keyHeld = 3528;     // 80 ms, in which the key is down.

std::int64_t scancodeOf(char letter)
{
    struct Row {
        std::string_view letters;
        std::int64_t first;
    };
    for (const Row row : {Row{"qwertyuiop", 16}, Row{"asdfghjkl", 30}, Row{"zxcvbnm", 44},
                          Row{"\n", 28}, Row{" ", 57}}) {
        const auto position = row.letters.find(letter);
        if (position != std::string_view::npos)
            return row.first + static_cast<std::int64_t>(position);
    }
    throw std::logic_error("the phrase is typed with letters, spaces and Return");
}

void addSound(std::vector<float>& sum, std::size_t start, const std::vector<float>& sound,
              float gain)
{
    sum.resize(std::max(sum.size(), start + sound.size()));
    for (std::size_t i = 0; i < sound.size(); ++i)
        sum[start + i] += gain * sound[i];
}

/// The sound scaled and rounded to 24 bits, without the zeros at the start and with a single zero
/// at the end. It is not dithered: a step is smaller than any output resolves, and dither would
/// make the silent end of a sound audible.
std::vector<float> finished(const std::vector<float>& samples, double gain)
{
    std::vector<float> rounded;
    rounded.reserve(samples.size() + 1);
    for (const float sample : samples) {
        const double value = std::round(static_cast<double>(sample) * gain * 0x1p23);
        if (value != 0 || !rounded.empty())
            rounded.push_back(static_cast<float>(value * 0x1p-23));
    }
    while (!rounded.empty() && rounded.back() == 0)
        rounded.pop_back();
    rounded.push_back(0);
    return rounded;
}

void finish(RenderedPack::Sounds& sounds, double gain, std::string_view packID)
{
    for (auto& [scancode, samples] : sounds) {
        samples = finished(samples, gain);
        const auto [lowest, highest] = std::ranges::minmax(samples);
        if (std::max(-lowest, highest) > highestPeak)
            throw std::runtime_error(
                fmt::format("{}: key {} peaks at {:.2f} at the loudness of all packs, above {}",
                            packID, scancode, std::max(-lowest, highest), highestPeak));
    }
}

} // namespace

RenderedPack renderPack(const Recipe& recipe)
{
    RenderedPack pack;
    for (const auto& [code, key] : KeyLayout::table()) {
        if (pack.press.contains(key.scancode))
            continue;
        const KeyInfo first = KeyLayout::info(key.scancode);
        pack.press[key.scancode] = renderKey(recipe, first, false);
        pack.release[key.scancode] = renderKey(recipe, first, true);
    }
    const double gain = std::pow(10, (packLoudness - integratedLoudness(typingOf(pack))) / 20);
    finish(pack.press, gain, recipe.id);
    finish(pack.release, gain, recipe.id);
    return pack;
}

std::vector<float> typingOf(const RenderedPack& pack)
{
    std::vector<float> sum;
    std::size_t start = 0;
    for (const char letter : std::string_view("the quick brown fox jumps over the lazy dog\n")) {
        const std::int64_t scancode = scancodeOf(letter);
        addSound(sum, start, pack.press.at(scancode), 1);
        addSound(sum, start + keyHeld, pack.release.at(scancode), releaseGain);
        start += keyInterval;
    }
    return sum;
}

} // namespace clavo
