// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "options/ToolOptions.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace clavo
{

/// The command line of clavo-type.
struct TypingOptions {
    std::optional<std::string> text; // The arguments, if there are any.
    std::string file;                // Read if there is no text. Empty: the standard input.
    std::string output;              // Empty: the speakers. "-": the standard output.
    std::string pack = Settings{}.packID;
    double wpm = 80;
    bool isHuman = false;
    std::optional<std::uint64_t> seed;
};

/// Reads the arguments after the program's name.
[[nodiscard]] std::variant<TypingOptions, ToolOptions::Answer>
readTypingOptions(std::span<const char* const> arguments);

} // namespace clavo
