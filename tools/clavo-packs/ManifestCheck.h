// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace clavo
{

/// What is wrong with a pack's `pack.json`.
struct ManifestCheck {
    bool isAccepted = false; // Whether the program makes a pack of it.
    std::vector<std::string> problems;
};

[[nodiscard]] ManifestCheck checkManifest(const std::filesystem::path& file);

} // namespace clavo
