// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

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

/// The keys that are down, by the kernel's numbers. Turns presses and releases into raw events: a
/// second press of a key is a repeat, and a modifier's event is left out if it would change
/// nothing. The receiver of flagsChanged only counts, so after one event too few or too many it
/// would treat every later press as a release.
class HeldKeys
{
public:
    /// None for a modifier that is down already.
    [[nodiscard]] std::optional<RawEvent> press(std::uint32_t evdevCode)
    {
        return change(evdevCode, /*isDown=*/true);
    }

    /// None for a modifier whose press was not seen.
    [[nodiscard]] std::optional<RawEvent> release(std::uint32_t evdevCode)
    {
        return change(evdevCode, /*isDown=*/false);
    }

    [[nodiscard]] bool isDown(std::uint32_t evdevCode) const
    {
        return evdevCode < m_down.size() && m_down[evdevCode];
    }

    /// Releases all keys, as when their keyboard is gone. Returns the events of the modifiers only:
    /// other releases have no effect.
    [[nodiscard]] std::vector<RawEvent> releaseAll();

private:
    [[nodiscard]] std::optional<RawEvent> change(std::uint32_t evdevCode, bool isDown);

    std::bitset<0x300> m_down; // One for each key number of the kernel.
};

} // namespace clavo::evdev
