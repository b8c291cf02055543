// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

namespace clavo
{

/// The value of an environment variable; empty if it is not set.
[[nodiscard]] inline std::string_view environment(const char* name)
{
    const auto* value = std::getenv(name);
    return value ? value : "";
}

/// The folders in the value of a variable such as PATH, in order.
[[nodiscard]] inline std::vector<std::filesystem::path> foldersIn(std::string_view value)
{
    std::vector<std::filesystem::path> folders;
    while (!value.empty()) {
        folders.emplace_back(value.substr(0, value.find(':')));
        value.remove_prefix(std::min(folders.back().native().size() + 1, value.size()));
    }
    return folders;
}

} // namespace clavo
