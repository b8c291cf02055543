// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace clavo
{

/// The udev rules that let the user at the machine read and write its keyboards, mice and
/// touchpads. The name of their file sorts behind udev's own rules that classify the devices and
/// before 73-seat-late.rules, which grants access to the devices that are tagged.
inline constexpr auto inputRuleFile = "/etc/udev/rules.d/70-clavo-input.rules";
inline constexpr const char* inputKinds[]{"KEYBOARD", "MOUSE", "TOUCHPAD"}; // udev's names.

/// The rule for the devices of one kind.
[[nodiscard]] inline std::string inputRule(const std::string& kind)
{
    return R"(SUBSYSTEM=="input", KERNEL=="event*", ENV{ID_INPUT_)" + kind +
           R"(}=="1", TAG+="uaccess")";
}

} // namespace clavo
