// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace clavo
{

// A udev rule gives the active user the right to read and write the machine's keyboards, mice and
// touchpads. These functions touch only files below `root` and run only the udevadm there, with
// PATH as the only variable of its environment.

/// Writes the rule and makes udev apply it at once. Returns nothing on success, otherwise one line
/// that says what is wrong. Granting twice changes nothing. An older rule is replaced, and the
/// rights that it gave for other devices are removed.
[[nodiscard]] std::optional<std::string> grantInput(const std::filesystem::path& root);

/// Removes the rule and the rights that it gave, but not those that other rules give. A program
/// that has a device open keeps using it. Returns nothing on success, and when there was no rule.
[[nodiscard]] std::optional<std::string> revokeInput(const std::filesystem::path& root);

} // namespace clavo
