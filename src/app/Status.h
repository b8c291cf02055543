// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "app/Settings.h"
#include "audio/AudioOutput.h"
#include "input/SecureInput.h"

#include <chrono>
#include <optional>
#include <string>

namespace clavo
{

/// What the running program reports about itself, to find out why it makes no sound. Nothing
/// in it comes from what is typed, but for the time of the last event.
struct Status {
    std::string version = {};

    std::string tap = {}; // What input comes from.
    bool isListening = false;
    InputAccess::State access = InputAccess::State::refused; // Whether the system lets it listen.
    bool needsRelaunch = false;                              // It does, but only after a new start.
    // Since the last event; nothing before the first. Fractions of a second, asked for often, would
    // give away the rhythm of the keys.
    std::optional<std::chrono::seconds> idle = {};
    SecureReason secureReason = SecureReason::none;

    OutputStatus output = {};
    bool isOutputRunning = false; // Else it sleeps until there is something to play, or is missing.

    std::string packName = {}; // Of the pack that sounds; empty when there is none.
    std::string packID = {};
    Settings settings = {};
    std::string missing = {}; // The technologies that the program is built without, if any.
};

/// One JSON object, with a line end, for programs.
[[nodiscard]] std::string jsonOf(const Status& status);

/// The same for people, from the JSON text. Nothing when the text is not that of a status.
[[nodiscard]] std::optional<std::string> describe(const std::string& json);

} // namespace clavo
