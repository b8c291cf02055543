// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/Recipe.h"

#include <filesystem>

namespace clavo
{

/// Renders a recipe into the pack folder `packs/<id>`, with a press and a release of every key of
/// the layout, and replaces the one that is there. An interrupted call leaves no folder that could
/// be taken for a pack. Throws std::runtime_error when something cannot be written.
void writePack(const Recipe& recipe, const std::filesystem::path& packs);

} // namespace clavo
