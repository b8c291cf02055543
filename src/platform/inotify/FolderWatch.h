// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QSocketNotifier>

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <system_error>

namespace clavo
{

/// Reports the files that appear in a folder and those whose rights change. The folder may come and
/// go, but not the one that contains it. Thread: main, which runs a Qt event loop.
class FolderWatch
{
public:
    /// Gets the names of the files; none when any of them may have changed. May not destroy or stop
    /// the watch.
    using Receiver = std::function<void(std::span<const std::string> names)>;

    FolderWatch(std::filesystem::path folder, Receiver changed);

    /// Starts to watch. On failure nothing is reported until another call succeeds: a user has a
    /// limited number of watches, which other programs may have used up.
    std::error_code start();
    void stop();
    [[nodiscard]] bool isWatching() const { return m_readable.has_value(); }

private:
    [[nodiscard]] bool watch();
    void readChanges();

    std::filesystem::path m_folder;
    Receiver m_changed;
    std::optional<Descriptor> m_file;
    std::optional<QSocketNotifier> m_readable;
    int m_folderWatch = -1;
    int m_parentWatch = -1; // While the folder is missing.
};

} // namespace clavo
