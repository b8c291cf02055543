// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/Recipe.h"
#include "keyboard/KeyInfo.h"

#include <cstdint>
#include <vector>

namespace clavo
{

/// The sound of one key in one direction: mono, 44,100 per second, 24-bit samples (±8388608 is full
/// scale), at its final level, which is 0.97 at most. It starts with its first sounding sample,
/// which a key must not keep waiting for, and ends with an exact 0.
///
/// Every key is its own: the recipe's figures are varied by a generator that is seeded by pack, key
/// and direction. The body, which press and release share, is the same for both.
[[nodiscard]] std::vector<std::int32_t> renderKey(const Recipe& recipe, const KeyInfo& key,
                                                  bool release);

} // namespace clavo
