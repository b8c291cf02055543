// SPDX-License-Identifier: MIT
#pragma once

#include "app/LoginItem.h"

#include <filesystem>
#include <vector>

namespace clavo
{

/// The file clavo.desktop of the folders whose entries a desktop starts at login.
///
/// The user's file hides one of the same name that came with the system. A file that is hidden, or
/// that GNOME's switch turns off, counts as not registered; one whose program is gone as not found.
class AutostartEntry final : public LoginItem
{
public:
    struct Folders {
        std::filesystem::path user;                // Need not exist yet.
        std::vector<std::filesystem::path> system; // The first one that has the file counts.
    };

    /// The program is the one to be started, by its absolute path.
    AutostartEntry(Folders folders, std::filesystem::path program);

    [[nodiscard]] Status status() const override;
    /// Lets the system's file count where that starts a program, else writes the user's.
    [[nodiscard]] std::optional<std::string> registerItem() override;
    /// Removes the user's file, or writes one that hides the system's.
    [[nodiscard]] std::optional<std::string> unregisterItem() override;

private:
    [[nodiscard]] Status systemStatus() const;
    [[nodiscard]] std::optional<std::string> write(const std::string& lines) const;
    [[nodiscard]] std::optional<std::string> removeUserFile() const;

    Folders m_folders;
    std::filesystem::path m_program;
};

/// The user's folder among their configuration, and the system's that the environment names.
[[nodiscard]] AutostartEntry::Folders
autostartFolders(const std::filesystem::path& userConfiguration);

} // namespace clavo
