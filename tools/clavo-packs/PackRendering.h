// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/Recipe.h"

#include <cstdint>
#include <map>
#include <vector>

namespace clavo
{

/// All sounds of a pack by scancode: mono, 44,100 per second. Every sample is a whole number of
/// 2^-23, as a file of 24 bits holds it.
struct RenderedPack {
    using Sounds = std::map<std::int64_t, std::vector<float>>;

    Sounds press;
    Sounds release;
};

/// The loudness of typingOf() for every pack that renderPack() makes, in LUFS.
inline constexpr double packLoudness = -23;

/// Renders a press and a release of every key of the layout. A sound starts with a sample that is
/// not 0, as silence would delay the key, and ends with a single 0.
///
/// The whole pack is scaled to packLoudness. Throws std::runtime_error when a peak of it would then
/// exceed 0.97 of full scale.
[[nodiscard]] RenderedPack renderPack(const Recipe& recipe);

/// A pangram typed with the pack, fast and evenly, with releases as soft as the program plays them.
/// The pack must have sounds for the letters, the space bar and Return.
[[nodiscard]] std::vector<float> typingOf(const RenderedPack& pack);

} // namespace clavo
