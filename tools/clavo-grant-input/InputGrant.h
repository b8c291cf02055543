// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace clavo
{

// The right of the active user to read the machine's keyboards and mice, granted and revoked by a
// udev rule. Only files below `root` are touched, and only its udevadm is run, in an environment
// that holds nothing but a PATH.

/// Writes the rule and makes udev apply it at once. Nothing on success, otherwise one line for
/// people that says what is wrong. Granting twice changes nothing.
[[nodiscard]] std::optional<std::string> grantInput(const std::filesystem::path& root);

/// Removes the rule and the rights that it gave; those that other rules give remain. Nothing on
/// success, also when there was no rule.
[[nodiscard]] std::optional<std::string> revokeInput(const std::filesystem::path& root);

} // namespace clavo
