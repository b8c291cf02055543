// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "app/Settings.h"
#include "audio/AudioOutput.h"
#include "input/SecureInput.h"

#include <cstdint>
#include <optional>
#include <string>

namespace clavo
{

/// What the running program tells of itself to somebody who wonders why it makes no sound. Nothing
/// in it comes from what is typed, but for the time of the last event.
struct Status {
    std::string version = {};

    std::string tap = {}; // What input comes from.
    bool isListening = false;
    InputAccess::State access = InputAccess::State::refused; // Whether the system lets it listen.
    bool needsRelaunch = false;                              // It does, but only after a new start.
    // Seconds since the last event; nothing before the first. Fractions would tell whoever asks
    // often the rhythm of the keys.
    std::optional<std::int64_t> idle = {};
    SecureReason secureReason = SecureReason::none;

    OutputStatus output = {};
    bool isOutputRunning = false; // Else it sleeps until there is something to play, or is missing.

    std::string packName = {}; // Of the pack that sounds; empty where there is none.
    std::string packID = {};
    Settings settings = {};
};

/// One JSON object, with a line end, for programs.
[[nodiscard]] std::string jsonOf(const Status& status);

/// The same for people, from the JSON text. Nothing where the text is not that of a status.
[[nodiscard]] std::optional<std::string> describe(const std::string& json);

} // namespace clavo
