// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileManager.h"

#include <functional>

namespace clavo
{

/// The file manager of the session's bus, which the first call starts where it does not run.
class DBusFileManager final : public FileManager
{
public:
    using Open = std::function<void(const std::filesystem::path& folder)>;

    /// `otherwise` opens a folder that no file manager of the bus has shown.
    explicit DBusFileManager(Open otherwise);

    void show(const std::filesystem::path& folder) override;

private:
    Open m_otherwise;
};

} // namespace clavo
