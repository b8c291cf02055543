// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Maps the kernel's key numbers (linux/input-event-codes.h) to the platform-neutral numbering.
/// Keys map by their labels: Alt is Option, the logo keys are Command, Delete deletes forwards.
namespace clavo::evdev
{

/// Added to the kernel's number of a key that has no virtual key code. No virtual key code is as
/// large.
inline constexpr std::int64_t privateCodes = 0x1000;

/// The virtual key code of a key, or its private code.
[[nodiscard]] std::int64_t virtualKeyCode(std::uint32_t evdevCode);

/// Whether the key's presses and releases are reported as flagsChanged: Shift, Control, Alt and
/// Meta on either side, Caps Lock, Fn.
[[nodiscard]] bool isModifier(std::uint32_t evdevCode);

} // namespace clavo::evdev
