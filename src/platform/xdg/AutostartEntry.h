// SPDX-License-Identifier: MIT
#pragma once

#include "app/LoginItem.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace clavo
{

/// The folders whose entries a desktop starts at login.
struct AutostartFolders {
    std::filesystem::path user;                // Need not exist yet.
    std::vector<std::filesystem::path> system; // The first one that has the file counts.
};

/// The user's folder below their configuration, and the system's folders that the environment
/// names.
[[nodiscard]] AutostartFolders autostartFolders(const std::filesystem::path& userConfiguration);

/// The file clavo.desktop of the autostart folders, which starts the program of this absolute path.
///
/// The user's file hides one of the same name that came with the system. A file that is hidden, or
/// that GNOME's switch turns off, counts as not registered; one whose program is gone as not found.
/// Registering uses the system's file if that starts a program, else writes the user's, which
/// starts the program in the background. Unregistering removes the user's file, or writes one that
/// hides the system's.
[[nodiscard]] std::unique_ptr<LoginItem> makeAutostartEntry(AutostartFolders folders,
                                                            std::filesystem::path program);

} // namespace clavo
