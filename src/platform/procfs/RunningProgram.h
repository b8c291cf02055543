// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace clavo
{

/// The file of the running program, or the file that an update put in its place. Empty if the
/// system does not report it.
[[nodiscard]] std::filesystem::path runningProgram();

/// The target of a link in the process folder, which appends " (deleted)" if the file is gone.
[[nodiscard]] std::filesystem::path programOfLink(const std::filesystem::path& link);

} // namespace clavo
