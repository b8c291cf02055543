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

/// One setting: a row of the table below.
struct Setting {
    using Switch = bool Settings::*;
    using Member = std::variant<Switch, double Settings::*, std::string Settings::*>;

    std::string_view key; // Its name in the store.
    Member member;
    std::string_view word = {}; // What a switch turns on, as the status lists it.
};

/// All settings. Code that reads, writes or lists settings uses this table.
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

/// Registers the defaults of all settings, without writing them, and reads the stored values.
[[nodiscard]] Settings readSettings(DefaultsStore& store);

/// Writes the setting of this member.
void writeSetting(DefaultsStore& store, const Settings& settings, const Setting::Member& member);
/// Writes all settings.
void writeSettings(DefaultsStore& store, const Settings& settings);

} // namespace clavo
