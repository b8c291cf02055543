// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace clavo
{

/// One character, typed on a US keyboard with ten fingers.
struct Keystroke {
    char character = 0;
    std::int64_t code = 0; // Virtual key code.
    bool isShifted = false;
    std::uint8_t finger = 0; // From left to right; the little fingers are 0 and 9.

    bool operator==(const Keystroke&) const = default;
};

struct Keystrokes {
    std::vector<Keystroke> strokes;
    std::size_t skipped = 0; // Characters that no key types.
};

/// The keys that type a text in UTF-8; a line end of any kind is Return. Bytes that are not UTF-8
/// are skipped one by one.
[[nodiscard]] Keystrokes keystrokesOf(std::string_view text);

[[nodiscard]] constexpr bool isLeftHand(const Keystroke& stroke)
{
    return stroke.finger < 4;
}

/// The space bar, which either thumb types.
[[nodiscard]] constexpr bool isThumb(const Keystroke& stroke)
{
    return stroke.finger == 4;
}

} // namespace clavo
