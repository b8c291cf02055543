// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

namespace clavo::evdev
{

/// Turns the movements of keys, by the kernel's numbers, into raw events, and knows which keys are
/// down for that: a key that is down already repeats, and a modifier's event is left out where it
/// would change nothing. The receiver of flagsChanged only counts, so that one event too few or too
/// many would make it take every later press for a release.
class HeldKeys
{
public:
    /// Nothing for a modifier that is down already.
    [[nodiscard]] std::optional<RawEvent> press(std::uint32_t evdevCode);

    /// Nothing for a modifier that went down unseen.
    [[nodiscard]] std::optional<RawEvent> release(std::uint32_t evdevCode);

    [[nodiscard]] bool isDown(std::uint32_t evdevCode) const
    {
        return evdevCode < m_down.size() && m_down[evdevCode];
    }

    /// Forgets all keys, as when their keyboard is gone. The events are those of the modifiers:
    /// nobody counts the others.
    [[nodiscard]] std::vector<RawEvent> releaseAll();

private:
    std::bitset<0x300> m_down; // As many as the kernel numbers.
};

} // namespace clavo::evdev
