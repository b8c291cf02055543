// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace clavo
{

/// What breaks the project's rules of layout in the tree below the folder, one line each, beginning
/// with the file. What is built and what version control keeps are not looked at.
[[nodiscard]] std::vector<std::string> brokenRules(const std::filesystem::path& root);

} // namespace clavo
