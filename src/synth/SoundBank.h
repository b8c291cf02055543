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

/// Draws an index below `count`, which is at least 1, each one as likely as any other.
using IndexDraw = std::function<std::size_t(std::size_t count)>;

/// Draws from the system's generator.
[[nodiscard]] const IndexDraw& systemDraw();

/// The ready sounds of one pack: for each scancode the variants of its press and of its release.
/// Built whole and replaced whole, never changed in place.
struct SoundBank {
    using Variants = std::vector<AudioBufferPtr>;

    std::map<std::int64_t, Variants> press;
    std::map<std::int64_t, Variants> release;
    std::size_t leftOut = 0; // Presses and releases of the pack for whose sounds it has no room.

    /// A sound for one key event, drawn at random; null is silence. Tries the exact scancode, then
    /// all of the key's slot, then (a press only) any key of the pack. An entry without variants
    /// counts as present.
    [[nodiscard]] AudioBufferPtr buffer(const KeyInfo& key, bool down,
                                        const IndexDraw& draw = systemDraw()) const;
};

} // namespace clavo
