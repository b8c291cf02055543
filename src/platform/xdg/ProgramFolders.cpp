// SPDX-License-Identifier: MIT
#include "platform/xdg/ProgramFolders.h"

#include "platform/posix/Environment.h"

#include <system_error>

namespace clavo
{

namespace fs = std::filesystem;

fs::path userFolder(const char* variable, const char* belowHome)
{
    const fs::path folder = environment(variable);
    return folder.is_absolute() ? folder : fs::path(environment("HOME")) / belowHome;
}

fs::path applicationSupportFolder()
{
    return userFolder("XDG_DATA_HOME", ".local/share");
}

fs::path settingsFile()
{
    return userFolder("XDG_CONFIG_HOME", ".config") / "Clavo" / "settings.json";
}

fs::path resourcesFolder(const fs::path& executable)
{
    std::error_code error;
    const auto folder = executable.parent_path().parent_path() / "share" / "clavo";
    return fs::is_directory(folder, error) ? folder : fs::path{};
}

} // namespace clavo
