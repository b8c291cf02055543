// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

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

} // namespace clavo
