// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeySlot.h"

#include <cstdint>
#include <unordered_map>

namespace clavo
{

/// What the program knows of one physical key.
struct KeyInfo {
    KeySlot slot = KeySlot::row3;
    std::int64_t scancode = -1; // PC set 1 as sound packs count it; −1 where there is none.
    float pan = 0;              // −1 left edge of the keyboard … +1 right edge.
    bool isCharacter = false;   // Typing it produces a character.

    bool operator==(const KeyInfo&) const = default;
};

} // namespace clavo

/// The physical keyboard: from the platform-neutral virtual key code to slot, scancode and place.
namespace clavo::KeyLayout
{

/// All 85 keys by virtual key code. Built on first use, by whichever thread comes first, and never
/// changed.
[[nodiscard]] const std::unordered_map<std::int64_t, KeyInfo>& table();

/// A key that has the pack scancode; a home-row key in the centre that types nothing when none has
/// it.
[[nodiscard]] KeyInfo info(std::int64_t scancode);

} // namespace clavo::KeyLayout
