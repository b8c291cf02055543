// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <string>
#include <string_view>

namespace clavo
{

/// The user's settings as the program starts with them.
struct Settings {
    bool enabled = true;
    double volume = 0.8;
    std::string packID = "cherrymx-red-abs";
    bool keyUpSounds = true;
    bool mouseSounds = false;
    bool scrollSounds = false;
    bool spatial = true;
};

/// The names under which the settings persist.
namespace SettingsKey
{
inline constexpr std::string_view enabled = "enabled";
inline constexpr std::string_view volume = "volume";
inline constexpr std::string_view packID = "packID";
inline constexpr std::string_view keyUpSounds = "keyUpSounds";
inline constexpr std::string_view mouseSounds = "mouseSounds";
inline constexpr std::string_view scrollSounds = "scrollSounds";
inline constexpr std::string_view spatial = "spatial";
} // namespace SettingsKey

/// Registers the defaults of all settings, which writes nothing, and reads what the user has
/// changed of them.
[[nodiscard]] Settings readSettings(DefaultsStore& store);

} // namespace clavo
