// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace clavo
{

/// What a replaced file survives: the end of this process, or also the machine losing its power.
/// The second waits for the disk, which takes milliseconds.
enum class Durability { process, power };

/// Makes `content` the file's whole content, readable and writable by the user alone. The content
/// is written under a temporary name in the same folder and then renamed, so that a reader finds
/// either the old file or the new one.
///
/// A link that leads to an ordinary file, or to a name without a file, stays, and the file behind
/// it is replaced. Any other link, a pipe, a device and an empty folder are themselves replaced and
/// never opened. On failure the file is untouched and nothing else is left behind. Any thread; the
/// last of two writers wins.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& file,
                                          std::string_view content,
                                          Durability durability = Durability::power);

/// Removes from a folder what a process left there that was killed inside replaceFile().
void removeAbandoned(const std::filesystem::path& folder);

} // namespace clavo
