// SPDX-License-Identifier: MIT
#include "text/Printable.h"

#include <cstddef>
#include <optional>

namespace clavo
{
namespace
{

struct Character {
    char32_t code = 0;
    std::size_t length = 0; // In bytes.
};

/// The first character of a text that is not empty; nothing when it does not start with UTF-8.
std::optional<Character> firstCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return Character{lead, 1};
    const std::size_t length = lead < 0xc0 ? 0 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (length == 0 || lead > 0xf4 || length > text.size())
        return std::nullopt;
    char32_t code = lead & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0U) != 0x80)
            return std::nullopt;
        code = (code << 6U) | (byte(i) & 0x3fU);
    }
    const char32_t least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    const bool isSurrogate = code >= 0xd800 && code <= 0xdfff;
    if (code < least || code > 0x10ffff || isSurrogate)
        return std::nullopt;
    return Character{code, length};
}

bool isControl(char32_t code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

bool isDirectionMark(char32_t code)
{
    return code == 0x061c || code == 0x200e || code == 0x200f ||
           (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

std::string printable(std::string_view text)
{
    return printable(text, text.size());
}

std::string printable(std::string_view text, std::size_t limit)
{
    std::string shown;
    for (; !text.empty() && limit > 0; --limit) {
        const auto character = firstCharacter(text);
        const auto length = character ? character->length : 1;
        if (character && !isControl(character->code) && !isDirectionMark(character->code))
            shown += text.substr(0, length);
        else
            shown += "\uFFFD";
        text.remove_prefix(length);
    }
    return shown;
}

} // namespace clavo
