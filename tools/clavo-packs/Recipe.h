// SPDX-License-Identifier: MIT
#pragma once

#include "synth/SwitchProfile.h"

#include <cstdint>
#include <filesystem>
#include <map>
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
        double offset = 0; // Seconds after the first event; below 0 it comes before it.
        double gain = 1;
    };
    using Stroke = std::vector<Event>;

    std::string id;
    std::string name;
    std::string detail;
    std::string category;
    std::string credit;
    std::uint64_t packIndex = 0; // Separates the packs' random streams.
    double keyscale = 1;         // How far the keys of the keyboard differ from each other.
    double headroom = 0;         // Peak of a press in dB relative to 0.9.
    double largeHeadroom = 0;    // The same of the space bar, Return and backspace.
    double releaseGain = 1;      // Peak of a release relative to a press.
    std::map<std::string, Stroke> strokes; // By group and direction: "row", "row-r", "space", …
};

/// Reads a recipe. Throws std::runtime_error that names the file and what is wrong with it.
[[nodiscard]] Recipe readRecipe(const std::filesystem::path& file);

} // namespace clavo
