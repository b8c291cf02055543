// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace clavo
{

/// The whole content of an ordinary file (or of one that a link leads to). Nothing when it cannot
/// be read, holds more than `maximumSize` bytes, or is anything else: a pipe would hang the reader
/// and a device has no end.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::filesystem::path& path,
                                                         std::uint64_t maximumSize);

} // namespace clavo
