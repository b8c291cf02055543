// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeySlot.h"

#include <cstdint>

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
