// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackFigures.h"
#include "clavo-packs/Recipe.h"

#include <string>

namespace clavo
{

/// A table of the figures of a pack and of the keyboard that its recipe describes. Figures outside
/// the permitted range are marked.
[[nodiscard]] std::string reportOf(const Recipe& recipe, const PackFigures& figures);

} // namespace clavo
