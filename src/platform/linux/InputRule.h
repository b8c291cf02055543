// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// The rule for udev that lets whoever sits at the machine read its keyboards and mice. By its name
/// it is read before 73-seat-late.rules, which gives out the devices that it has marked.
inline constexpr auto inputRule = R"(SUBSYSTEM=="input", KERNEL=="event*", TAG+="uaccess")";
inline constexpr auto inputRuleFile = "/etc/udev/rules.d/70-clavo-input.rules";

} // namespace clavo
