// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackFigures.h"
#include "clavo-packs/Recipe.h"

#include <string>

namespace clavo
{

/// A table of what a pack measures and of what the keyboard that its recipe describes measures.
/// What lies outside is marked.
[[nodiscard]] std::string reportOf(const Recipe& recipe, const PackFigures& figures);

} // namespace clavo
