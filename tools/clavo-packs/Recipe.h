// SPDX-License-Identifier: MIT
#pragma once

#include "synth/SwitchSynth.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace clavo
{

/// Everything a pack is rendered from.
struct Recipe {
    /// One hit of a stroke. A real stroke has two: the slide or the bump, and the bottom or the
    /// top.
    struct Event {
        SwitchProfile profile;
        double offset = 0; // Seconds after the first event; negative: before it.
        double gain = 1;
    };
    using Stroke = std::vector<Event>;

    /// The figures of recordings of the real keyboard, as SoundFigures defines them.
    struct Reference {
        struct Sound {
            double centroid = 0;
            double t20 = 0;
            std::optional<double> t60; // Nothing if the recording's noise hides it.
        };
        Sound press;
        Sound release;
        double crest = 0;        // Of a press.
        double releaseLevel = 0; // A release in dB above a press.
    };

    std::string id;
    std::string name;
    std::string detail;
    std::string category;
    std::string credit;
    std::uint64_t packIndex = 0;           // Separates the packs' random streams.
    double keyscale = 1;                   // How much the keys of the keyboard differ.
    std::map<std::string, double> levels;  // By group: the peak of a press in dB above a row's.
    double releaseLevel = 0;               // The peak of a release in dB above its press.
    std::map<std::string, Stroke> strokes; // By group and direction: "row", "row-r", "space", …
    Reference reference;
};

/// Reads a recipe. Throws std::runtime_error that names the file and what is wrong with it.
[[nodiscard]] Recipe readRecipe(const std::filesystem::path& file);

} // namespace clavo
