// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileManager.h"

#include <vector>

namespace clavo
{

/// A file manager that only remembers what it was to show.
class FakeFileManager final : public FileManager
{
public:
    std::vector<std::filesystem::path> shown;

    void show(const std::filesystem::path& folder) override { shown.push_back(folder); }
};

} // namespace clavo
