// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <filesystem>

namespace clavo
{

/// Whether a file or folder of this owner and mode can be changed by root alone.
[[nodiscard]] bool isRootsAlone(uid_t owner, mode_t mode);

/// The program without symbolic links if root alone can change it and the folders that it is in;
/// otherwise an empty path. Another program could replace it before it is run as root.
[[nodiscard]] std::filesystem::path rootsProgram(const std::filesystem::path& program);

} // namespace clavo
