// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace clavo
{

/// What is wrong with a pack's `pack.json`.
struct ManifestCheck {
    bool isAccepted = false; // Whether the program loads the pack.
    std::vector<std::string> problems;
    std::vector<std::string> remarks; // About members that have no effect.
};

[[nodiscard]] ManifestCheck checkManifest(const std::filesystem::path& file);

} // namespace clavo
