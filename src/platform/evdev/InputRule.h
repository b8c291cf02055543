// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// The udev rule that lets the user at the machine read its keyboards and mice. Its file name sorts
/// before 73-seat-late.rules, which grants access to the devices that the rule has tagged.
inline constexpr auto inputRule = R"(SUBSYSTEM=="input", KERNEL=="event*", TAG+="uaccess")";
inline constexpr auto inputRuleFile = "/etc/udev/rules.d/70-clavo-input.rules";

} // namespace clavo
