// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace clavo
{

/// What clavo-type is asked to do.
struct TypingOptions {
    std::optional<std::string> text; // Of the arguments.
    std::string file;                // Read where no text is given; empty: the standard input.
    std::string output;              // Empty: the speakers.
    std::string pack = Settings{}.packID;
    double wpm = 80;
    bool isHuman = false;
    std::optional<std::uint64_t> seed;
};

struct TypingHelp {
};

struct TypingMisuse {
    std::string message; // One line, without its end.
};

/// Reads the arguments that follow the program's name.
[[nodiscard]] std::variant<TypingOptions, TypingHelp, TypingMisuse>
readTypingOptions(std::span<const char* const> arguments);

[[nodiscard]] std::string_view typingHelp();

} // namespace clavo
