// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Clavo.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace clavo::latency
{

enum class Mode { Keys, Text, Flood, Soak };

struct Options {
    Mode mode = Mode::Keys;
    std::optional<ClavoSetup> clavo; // Without one, a running Clavo is measured.
    std::size_t count = 500;         // Keys, or events of a flood or a soak.
    std::string text;
    std::filesystem::path wav; // Where the recording goes; nowhere when empty.
};

/// Nothing when the command line is wrong.
[[nodiscard]] std::optional<Options> readOptions(std::span<char* const> arguments);

extern const char* const usage;

} // namespace clavo::latency
