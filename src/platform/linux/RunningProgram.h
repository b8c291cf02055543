// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace clavo
{

/// The file of the running program: what an update put in its place, if one did. Empty where the
/// system does not tell.
[[nodiscard]] std::filesystem::path runningProgram();

/// The file behind a link of the process folder, which marks one that is gone by " (deleted)".
[[nodiscard]] std::filesystem::path programOfLink(const std::filesystem::path& link);

} // namespace clavo
