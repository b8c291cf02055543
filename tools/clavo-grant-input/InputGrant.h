// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace clavo
{

/// The right of whoever sits at the machine to read its keyboards and mice, given and taken back by
/// a rule for udev. All files are those below the root of the system; the one program that is run
/// is its udevadm, in an environment of ours.

/// Writes the rule and has udev follow it at once. Nothing on success; else what is wrong, in a
/// line for people. A second time changes nothing.
[[nodiscard]] std::optional<std::string> grantInput(const std::filesystem::path& root);

/// Removes the rule, and what it gave from the devices; what other rules give stays or comes back.
/// Nothing on success, also where there was no rule.
[[nodiscard]] std::optional<std::string> revokeInput(const std::filesystem::path& root);

} // namespace clavo
