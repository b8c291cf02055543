// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/Recipe.h"
#include "keyboard/KeyLayout.h"

#include <vector>

namespace clavo
{

/// The sound of one key in one direction: mono, 44,100 per second, at its level relative to the
/// other sounds of the recipe. The loudest sample of a press comes within 18 ms.
///
/// Every key is its own: the recipe's figures are varied by a generator that is seeded by pack, key
/// and direction. The body, which press and release share, is the same for both.
[[nodiscard]] std::vector<float> renderKey(const Recipe& recipe, const KeyInfo& key, bool release);

} // namespace clavo
