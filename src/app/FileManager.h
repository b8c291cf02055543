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

    /// Opens a window of the file manager on the folder. Returns at once; a failure is not
    /// reported.
    virtual void show(const std::filesystem::path& folder) = 0;
};

} // namespace clavo
