// SPDX-License-Identifier: MIT
#include "clavo-packs/PackFigures.h"

#include "audio/SoundLevels.h"
#include "clavo-packs/Loudness.h"
#include "keyboard/KeyLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::array rowSlots{KeySlot::row0, KeySlot::row1, KeySlot::row2, KeySlot::row3,
                              KeySlot::row4};
constexpr std::array largeSlots{KeySlot::space, KeySlot::enter, KeySlot::backspace};

/// The figures of all keys by slot.
using Figures = std::map<KeySlot, std::vector<SoundFigures>>;

Figures bySlot(const RenderedPack::Sounds& sounds)
{
    Figures figures;
    for (const auto& [scancode, samples] : sounds)
        figures[KeyLayout::info(scancode).slot].push_back(figuresOf(samples));
    return figures;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t upper = values.size() / 2;
    return values.size() % 2 == 1 ? values[upper] : (values[upper - 1] + values[upper]) / 2;
}

using Figure = double SoundFigures::*;

std::vector<double> valuesOf(Figure figure, const std::vector<SoundFigures>& keys)
{
    std::vector<double> values(keys.size());
    std::ranges::transform(keys, values.begin(), figure);
    return values;
}

std::vector<SoundFigures> rowKeys(const Figures& figures)
{
    std::vector<SoundFigures> keys;
    for (const KeySlot slot : rowSlots)
        std::ranges::copy(figures.at(slot), std::back_inserter(keys));
    return keys;
}

SoundFigures medians(const std::vector<SoundFigures>& keys)
{
    SoundFigures middle;
    for (const Figure figure : {&SoundFigures::level, &SoundFigures::crest, &SoundFigures::centroid,
                                &SoundFigures::t20, &SoundFigures::t60, &SoundFigures::length})
        middle.*figure = median(valuesOf(figure, keys));
    return middle;
}

double mean(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// An estimate for the whole keyboard from a few keys.
double standardDeviation(const std::vector<double>& values)
{
    double squares = 0;
    for (const double value : values)
        squares += std::pow(value - mean(values), 2);
    return std::sqrt(squares / static_cast<double>(values.size() - 1));
}

double releaseLevelOf(const RenderedPack& pack)
{
    const auto levels = [](const RenderedPack::Sounds& sounds) {
        return valuesOf(&SoundFigures::level, rowKeys(bySlot(sounds)));
    };
    const auto presses = levels(pack.press);
    auto differences = levels(pack.release);
    for (std::size_t i = 0; i < differences.size(); ++i)
        differences[i] += 20 * std::log10(static_cast<double>(releaseGain)) - presses[i];
    return median(differences);
}

double peakOf(const RenderedPack& pack)
{
    float peak = 0;
    for (const auto* const sounds : {&pack.press, &pack.release}) {
        for (const auto& [scancode, samples] : *sounds) {
            const auto [lowest, highest] = std::ranges::minmax(samples);
            peak = std::max({peak, -lowest, highest});
        }
    }
    return static_cast<double>(peak);
}

} // namespace

PackFigures figuresOf(const RenderedPack& pack)
{
    const Figures presses = bySlot(pack.press);
    PackFigures figures;
    figures.loudness = integratedLoudness(typingOf(pack));
    figures.peak = peakOf(pack);
    figures.press = medians(rowKeys(presses));
    figures.release = medians(rowKeys(bySlot(pack.release)));
    figures.releaseLevel = releaseLevelOf(pack);
    for (const KeySlot slot : rowSlots) {
        const auto centroids = valuesOf(&SoundFigures::centroid, presses.at(slot));
        const auto levels = valuesOf(&SoundFigures::level, presses.at(slot));
        figures.centroidSpread += standardDeviation(centroids) / mean(centroids) / rowSlots.size();
        figures.levelSpread += standardDeviation(levels) / rowSlots.size();
    }
    for (const KeySlot slot : largeSlots) {
        const SoundFigures key = medians(presses.at(slot));
        figures.largeKeys[slot] = {.level = key.level - figures.press.level,
                                   .centroid = key.centroid / figures.press.centroid};
    }
    return figures;
}

} // namespace clavo
