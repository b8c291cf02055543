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

/// What the running program reports about itself, for a user who hears nothing. It holds nothing
/// about the typed keys but the time of the last event.
struct Status {
    std::string version = {};

    std::string tap = {}; // The source of input.
    bool isListening = false;
    InputAccess::State access = InputAccess::State::refused;
    bool needsRelaunch = false; // Access is granted, but takes effect after a relaunch.
    // Time since the last event; nothing before the first. In whole seconds, because fractions
    // would reveal the rhythm of typing to a program that asks often.
    std::optional<std::chrono::seconds> idle = {};
    SecureReason secureReason = SecureReason::none;

    OutputStatus output = {};
    bool isOutputRunning = false; // False while it sleeps; true also for silence without a server.

    std::string packName = {}; // Of the selected pack; empty when there is none.
    std::string packID = {};
    Settings settings = {};
    std::string missing = {}; // The technologies that the build lacks; empty when there are none.
};

/// The status as one JSON object with a line end, for programs.
[[nodiscard]] std::string jsonOf(const Status& status);

/// The JSON text of a status as text for people; nothing when it is not a status. Another process
/// may have written it: the text is safe for a terminal.
[[nodiscard]] std::optional<std::string> describe(const std::string& json);

/// The JSON text of a status for programs and people, with its strings safe for a terminal; nothing
/// when it is not a status.
[[nodiscard]] std::optional<std::string> printableJson(const std::string& json);

} // namespace clavo
