// SPDX-License-Identifier: MIT
#include "platform/xdg/ProgramFolders.h"

#include "platform/posix/Environment.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <system_error>

namespace clavo
{

namespace fs = std::filesystem;

namespace
{

// Never a relative path: files would go into the current folder.
fs::path homeFolder()
{
    if (const fs::path home = environment("HOME"); home.is_absolute())
        return home;
    passwd entry = {};
    passwd* found = nullptr;
    std::array<char, 16384> texts = {};
    const auto status = ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
    const fs::path home = status == 0 && found ? found->pw_dir : "";
    return home.is_absolute() ? home : "/";
}

} // namespace

fs::path userFolder(const char* variable, const char* belowHome)
{
    const fs::path folder = environment(variable);
    return folder.is_absolute() ? folder : homeFolder() / belowHome;
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
