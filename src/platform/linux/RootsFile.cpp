// SPDX-License-Identifier: MIT
#include "platform/linux/RootsFile.h"

#include <sys/stat.h>

#include <system_error>

namespace clavo
{

// Of a file with an access list, the group's bits are the most that any entry grants.
bool isRootsAlone(uid_t owner, mode_t mode)
{
    return owner == 0 && (mode & (S_IWGRP | S_IWOTH)) == 0;
}

std::filesystem::path rootsProgram(const std::filesystem::path& program)
{
    std::error_code error;
    const auto real = std::filesystem::canonical(program, error);
    if (error || !std::filesystem::is_regular_file(real, error))
        return {};
    for (auto place = real;; place = place.parent_path()) {
        struct stat of = {};
        if (::lstat(place.c_str(), &of) != 0 || !isRootsAlone(of.st_uid, of.st_mode))
            return {};
        if (place == place.root_path())
            return real;
    }
}

} // namespace clavo
