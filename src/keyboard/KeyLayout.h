// SPDX-License-Identifier: MIT
#pragma once

#include "keyboard/KeyInfo.h"

#include <cstdint>
#include <unordered_map>

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
