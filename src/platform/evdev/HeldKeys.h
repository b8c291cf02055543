// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

namespace clavo::evdev
{

/// Turns presses and releases of keys, by the kernel's numbers, into raw events, and keeps which
/// keys are down: a second press of a key is a repeat, and a modifier's event is left out if it
/// would change nothing. The receiver of flagsChanged only counts, so with one event too few or too
/// many it would take every later press for a release.
class HeldKeys
{
public:
    /// None for a modifier that is down already.
    [[nodiscard]] std::optional<RawEvent> press(std::uint32_t evdevCode);

    /// None for a modifier whose press was not seen.
    [[nodiscard]] std::optional<RawEvent> release(std::uint32_t evdevCode);

    [[nodiscard]] bool isDown(std::uint32_t evdevCode) const
    {
        return evdevCode < m_down.size() && m_down[evdevCode];
    }

    /// Releases all keys, as when their keyboard is gone. Returns the events of the modifiers only:
    /// other releases have no effect.
    [[nodiscard]] std::vector<RawEvent> releaseAll();

private:
    std::bitset<0x300> m_down; // One for each key number of the kernel.
};

} // namespace clavo::evdev
