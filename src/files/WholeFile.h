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

/// Which file it is, whatever it is called: equal for all paths that lead to it.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0; // On the device.

    auto operator<=>(const FileIdentity&) const = default;
};

/// The file that a path leads to; nothing when there is none.
[[nodiscard]] std::optional<FileIdentity> identityOf(const std::filesystem::path& path);

/// The whole content of an ordinary file (or of one that a link leads to). Nothing when it cannot
/// be read, holds more than `maximumSize` bytes, or is anything else: a pipe would hang the reader
/// and a device has no end.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::filesystem::path& path,
                                                         std::uint64_t maximumSize);

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
