// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace clavo
{

/// A base folder of the user: the variable's if that is an absolute path, as the desktop's rules
/// ask, else the one below home. Where HOME is no absolute path, home is that of the password
/// database, or "/" without one.
[[nodiscard]] std::filesystem::path userFolder(const char* variable, const char* belowHome);

/// The user's folder for the files of all applications.
[[nodiscard]] std::filesystem::path applicationSupportFolder();

/// The file of the user's settings.
[[nodiscard]] std::filesystem::path settingsFile();

/// The files that came with a program of this path; empty if there are none.
[[nodiscard]] std::filesystem::path resourcesFolder(const std::filesystem::path& executable);

} // namespace clavo
