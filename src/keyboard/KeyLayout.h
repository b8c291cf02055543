// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeySlot.h"

#include <cstdint>
#include <unordered_map>

namespace clavo
{

/// The properties of one physical key.
struct KeyInfo {
    KeySlot slot = KeySlot::row3;
    std::int64_t scancode = -1; // The sound packs' number (PC set 1); −1 for none.
    float pan = 0;              // −1 left edge of the keyboard … +1 right edge.
    bool isCharacter = false;   // It produces a character.

    bool operator==(const KeyInfo&) const = default;
};

} // namespace clavo

/// The physical keyboard: the slot, scancode and position of every platform-neutral key code.
namespace clavo::KeyLayout
{

/// All 85 keys by virtual key code. Built on first use, on any thread, and never changed.
[[nodiscard]] const std::unordered_map<std::int64_t, KeyInfo>& table();

/// A key with this pack scancode; if there is none, a key in the centre of the home row that
/// produces no character.
[[nodiscard]] KeyInfo info(std::int64_t scancode);

} // namespace clavo::KeyLayout
