// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeyLayout.h"
#include "synth/AudioBuffer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace clavo
{

/// Draws an index below `count`, which is at least 1, with equal probabilities.
using IndexDraw = std::function<std::size_t(std::size_t count)>;

/// Draws from the system's random numbers.
[[nodiscard]] const IndexDraw& systemDraw();

/// The decoded sounds of one pack: for each scancode the variants of its press and of its release.
/// Replaced as a whole, never changed in place.
struct SoundBank {
    using Variants = std::vector<AudioBufferPtr>;

    std::map<std::int64_t, Variants> press;
    std::map<std::int64_t, Variants> release;
    std::size_t leftOut = 0; // The pack's presses and releases that had no room.

    /// A random sound for one key event; null for silence. Chosen from the exact scancode,
    /// otherwise from those of the key's slot, otherwise (for a press) from any key of the pack. An
    /// entry without variants counts as present.
    [[nodiscard]] AudioBufferPtr buffer(const KeyInfo& key, bool down,
                                        const IndexDraw& draw = systemDraw()) const;
};

} // namespace clavo
