// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace clavo
{

/// A file's identity, equal for all paths that lead to the same file.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0; // On the device.

    auto operator<=>(const FileIdentity&) const = default;
};

/// The identity of the file at the path; nothing when there is none.
[[nodiscard]] std::optional<FileIdentity> identityOf(const std::filesystem::path& path);

/// The whole content of a regular file, links followed. Nothing when it cannot be read, exceeds
/// `maximumSize` bytes, or is anything else: a pipe would hang the reader and a device has no end.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::filesystem::path& path,
                                                         std::uint64_t maximumSize);

/// What a replaced file survives: the end of the process, or also a power failure. The latter waits
/// for the disk, which takes milliseconds.
enum class Durability { process, power };

/// Replaces the file by one with this content, readable and writable only by the user. The content
/// is written under a temporary name in the same folder and then renamed, so that a reader sees
/// either the old file or the new one.
///
/// A link to a regular file, or to a name without a file, stays, and its target is replaced. Any
/// other link, a pipe, a device and an empty folder are replaced themselves and never opened. On
/// failure the file is unchanged and nothing else is left. Any thread; the last of two writers
/// wins.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& file,
                                          std::string_view content,
                                          Durability durability = Durability::power);

/// Renames the file to NAME.broken, or where that exists to NAME.broken-2 and so on. For a link,
/// the file that replaceFile() would replace is renamed.
[[nodiscard]] std::error_code setAside(const std::filesystem::path& file);

/// Removes the temporary files of processes that were killed inside replaceFile().
void removeAbandoned(const std::filesystem::path& folder);

} // namespace clavo
