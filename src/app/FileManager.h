// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace clavo
{

/// The desktop's file manager. Thread: main.
class FileManager
{
public:
    virtual ~FileManager() = default;

    /// Shows what is in the folder, in a window of the file manager's. Returns at once; a folder
    /// that cannot be opened is not reported.
    virtual void show(const std::filesystem::path& folder) = 0;
};

} // namespace clavo
