// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>

namespace clavo
{

/// The user's settings, with their defaults.
struct Settings {
    bool enabled = true;
    double volume = 0.8;
    std::string packID = "cherrymx-red-abs";
    bool keyUpSounds = true;
    bool mouseSounds = false;
    bool scrollSounds = false;
    bool spatial = true;
};

/// One of the settings: a row of the table below.
struct Setting {
    using Switch = bool Settings::*;
    using Member = std::variant<Switch, double Settings::*, std::string Settings::*>;

    std::string_view key; // The name under which it persists.
    Member member;
    std::string_view word = {}; // For what a switch turns on, in the list of the status.
};

/// All settings. Whatever reads, writes or lists them goes through this table.
inline constexpr std::array allSettings{
    Setting{"enabled", &Settings::enabled},
    Setting{"volume", &Settings::volume},
    Setting{"packID", &Settings::packID},
    Setting{"keyUpSounds", &Settings::keyUpSounds, "releases"},
    Setting{"mouseSounds", &Settings::mouseSounds, "mouse buttons"},
    Setting{"scrollSounds", &Settings::scrollSounds, "wheel"},
    Setting{"spatial", &Settings::spatial, "sides"},
};

[[nodiscard]] DefaultsValue valueOf(const Setting& setting, const Settings& settings);

/// Registers the defaults of all settings, which writes nothing, and reads what the user has
/// changed.
[[nodiscard]] Settings readSettings(DefaultsStore& store);

/// Writes the one setting that this member holds.
void writeSetting(DefaultsStore& store, const Settings& settings, const Setting::Member& member);
/// Writes them all.
void writeSettings(DefaultsStore& store, const Settings& settings);

} // namespace clavo
