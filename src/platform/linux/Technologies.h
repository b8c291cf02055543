// SPDX-License-Identifier: MIT
#pragma once

/// The technologies that the program is built with. The factories of one that is left out are
/// declared and not defined, so each call of them stands in an `if constexpr`.
namespace clavo::built
{

inline constexpr bool atspi = CLAVO_ATSPI;
inline constexpr bool dbus = CLAVO_DBUS;
inline constexpr bool evdev = CLAVO_EVDEV;
inline constexpr bool journal = CLAVO_JOURNAL;
inline constexpr bool pipewire = CLAVO_PIPEWIRE;
inline constexpr bool pulse = CLAVO_PULSE;
inline constexpr bool x11 = CLAVO_X11;

} // namespace clavo::built
