// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

namespace clavo
{

/// Makes `content` the file's whole content, readable by the user alone. It is written under a
/// temporary name in the same folder, flushed to the disk and then renamed, so that a reader, a
/// killed process and a machine that lost its power all meet either the old file or the new one.
///
/// False when any step failed: what was there is untouched, and nothing else is left behind. An
/// empty folder in the file's place gives way. Any thread; the last of two writers wins.
[[nodiscard]] bool replaceFile(const std::filesystem::path& file, std::string_view content);

/// Removes from a folder what a process left there that was killed inside replaceFile().
void removeAbandoned(const std::filesystem::path& folder);

} // namespace clavo
