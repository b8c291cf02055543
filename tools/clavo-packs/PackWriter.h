// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackRendering.h"
#include "clavo-packs/Recipe.h"

#include <filesystem>

namespace clavo
{

/// Writes a rendered recipe as the pack folder `packs/<id>`, which replaces an existing one. An
/// interrupted call leaves no incomplete pack. Throws std::runtime_error when something cannot be
/// written.
void writePack(const Recipe& recipe, const RenderedPack& rendered,
               const std::filesystem::path& packs);

} // namespace clavo
