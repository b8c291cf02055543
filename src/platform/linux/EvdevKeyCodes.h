// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The kernel's key numbers (linux/input-event-codes.h) in the platform-neutral numbering. Keys map
/// by what is printed on them: Alt is Option, the logo keys are Command, Delete deletes forwards.
namespace clavo::evdev
{

/// Added to the kernel's number of a key that has no virtual key code. No virtual key code is as
/// large.
inline constexpr std::int64_t privateCodes = 0x1000;

/// The virtual key code of a key, or its private code.
[[nodiscard]] std::int64_t virtualKeyCode(std::uint32_t evdevCode);

/// Whether the key is one whose movement is told as flagsChanged: Shift, Control, Alt and Meta of
/// either side, Caps Lock, Fn.
[[nodiscard]] bool isModifier(std::uint32_t evdevCode);

} // namespace clavo::evdev
