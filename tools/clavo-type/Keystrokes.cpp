// SPDX-License-Identifier: MIT
#include "clavo-type/Keystrokes.h"

#include <array>
#include <optional>

namespace clavo
{
namespace
{

/// Keys from left to right: the characters they type without and with shift, and their fingers.
struct Row {
    std::string_view plain;
    std::string_view shifted;
    std::string_view fingers;
    std::array<std::int64_t, 13> codes;
};

constexpr Row rows[] = {
    {"`1234567890-=",
     "~!@#$%^&*()_+",
     "0012336678999",
     {50, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24}},
    {"qwertyuiop[]\\",
     "QWERTYUIOP{}|",
     "0123366789999",
     {12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 42}},
    {"asdfghjkl;'", "ASDFGHJKL:\"", "01233667899", {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39}},
    {"zxcvbnm,./", "ZXCVBNM<>?", "0123366789", {6, 7, 8, 9, 11, 45, 46, 43, 47, 44}},
    {" \n\t\b", "", "4909", {49, 36, 48, 51}},
};

using Keyboard = std::array<std::optional<Keystroke>, 128>;

Keyboard makeKeyboard()
{
    Keyboard keyboard;
    const auto put = [&](char character, const Row& row, std::size_t i, bool isShifted) {
        keyboard[static_cast<std::size_t>(character)] = {
            character, row.codes[i], isShifted, static_cast<std::uint8_t>(row.fingers[i] - '0')};
    };
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.plain.size(); ++i)
            put(row.plain[i], row, i, false);
        for (std::size_t i = 0; i < row.shifted.size(); ++i)
            put(row.shifted[i], row, i, true);
    }
    return keyboard;
}

/// The length in bytes of the character at the start of the text; 1 if there is no valid one.
std::size_t characterLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : byte(0) >= 0xc0 ? 2 : 1;
    if (length > text.size())
        return 1;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80)
            return 1;
    }
    return length;
}

} // namespace

Keystrokes keystrokesOf(std::string_view text)
{
    static const auto keyboard = makeKeyboard();
    Keystrokes result;
    while (!text.empty()) {
        const auto length = text.starts_with("\r\n") ? 2 : characterLength(text);
        const auto first = static_cast<unsigned char>(text.front() == '\r' ? '\n' : text.front());
        text.remove_prefix(length);
        if (first < keyboard.size() && keyboard[first])
            result.strokes.push_back(*keyboard[first]);
        else
            ++result.skipped;
    }
    return result;
}

} // namespace clavo
