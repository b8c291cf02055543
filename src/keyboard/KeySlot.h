// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace clavo
{

/// The groups of keys that sound alike. Their order matters: it determines seedOffset().
enum class KeySlot { row0, row1, row2, row3, row4, space, enter, backspace };

inline constexpr std::array allKeySlots{KeySlot::row0,  KeySlot::row1,     KeySlot::row2,
                                        KeySlot::row3,  KeySlot::row4,     KeySlot::space,
                                        KeySlot::enter, KeySlot::backspace};

/// Separates the synthesizer's random streams: the slot's index times 1000003, a prime.
[[nodiscard]] std::uint64_t seedOffset(KeySlot slot);

/// All pack scancodes of the slot, from left to right, to use when a pack lacks the exact key.
[[nodiscard]] std::span<const std::int64_t> fallbackScancodes(KeySlot slot);

} // namespace clavo
