// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace clavo
{

/// The text as a terminal can show it: valid UTF-8 without control characters, line ends and tabs
/// included, and without the marks that change the direction of text. U+FFFD replaces each such
/// character and each byte that is not UTF-8.
[[nodiscard]] std::string printable(std::string_view text);

/// The same of the text's first `limit` characters.
[[nodiscard]] std::string printable(std::string_view text, std::size_t limit);

} // namespace clavo
