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
/// Every key sounds different: a generator seeded with the pack, the key and the direction varies
/// the recipe's figures. The body does not depend on the direction: press and release share it.
[[nodiscard]] std::vector<float> renderKey(const Recipe& recipe, const KeyInfo& key, bool release);

} // namespace clavo
