// SPDX-License-Identifier: MIT
#include "app/Settings.h"

namespace clavo
{
namespace
{

template <typename Value>
Value read(const DefaultsStore& store, std::string_view key, const Value& otherwise)
{
    const auto stored = store.value(key);
    const auto* value = stored ? std::get_if<Value>(&*stored) : nullptr;
    return value ? *value : otherwise;
}

} // namespace

Settings readSettings(DefaultsStore& store)
{
    const Settings standard;
    store.registerDefaults({
        {std::string(SettingsKey::enabled), standard.enabled},
        {std::string(SettingsKey::volume), standard.volume},
        {std::string(SettingsKey::packID), standard.packID},
        {std::string(SettingsKey::keyUpSounds), standard.keyUpSounds},
        {std::string(SettingsKey::mouseSounds), standard.mouseSounds},
        {std::string(SettingsKey::scrollSounds), standard.scrollSounds},
        {std::string(SettingsKey::spatial), standard.spatial},
    });
    return {
        .enabled = read(store, SettingsKey::enabled, standard.enabled),
        .volume = read(store, SettingsKey::volume, standard.volume),
        .packID = read(store, SettingsKey::packID, standard.packID),
        .keyUpSounds = read(store, SettingsKey::keyUpSounds, standard.keyUpSounds),
        .mouseSounds = read(store, SettingsKey::mouseSounds, standard.mouseSounds),
        .scrollSounds = read(store, SettingsKey::scrollSounds, standard.scrollSounds),
        .spatial = read(store, SettingsKey::spatial, standard.spatial),
    };
}

} // namespace clavo
