// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Clavo.h"
#include "options/ToolOptions.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace clavo::latency
{

enum class Mode { keys, text, flood, soak };

struct Options {
    Mode mode = Mode::keys;
    std::optional<ClavoSetup> clavo; // Without one, a running Clavo is measured.
    std::size_t count = 500;         // Keys, or events of a flood or a soak.
    std::string text;
    std::filesystem::path wav; // Where the recording goes; nowhere when empty.
};

/// Reads the arguments that follow the program's name.
[[nodiscard]] std::variant<Options, ToolOptions::Answer>
readOptions(std::span<const char* const> arguments);

} // namespace clavo::latency
