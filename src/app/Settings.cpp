// SPDX-License-Identifier: MIT
#include "app/Settings.h"

#include <algorithm>
#include <functional>
#include <map>
#include <type_traits>
#include <utility>

namespace clavo
{

DefaultsValue valueOf(const Setting& setting, const Settings& settings)
{
    return std::visit([&](auto member) { return DefaultsValue(settings.*member); }, setting.member);
}

Settings readSettings(DefaultsStore& store)
{
    Settings settings;
    std::map<std::string, DefaultsValue, std::less<>> defaults;
    for (const auto& setting : allSettings)
        defaults.emplace(setting.key, valueOf(setting, settings));
    store.registerDefaults(std::move(defaults));

    for (const auto& setting : allSettings) {
        const auto stored = store.value(setting.key);
        const auto read = [&](auto member) {
            using Value = std::remove_reference_t<decltype(settings.*member)>;
            if (const auto* const value = stored ? std::get_if<Value>(&*stored) : nullptr)
                settings.*member = *value;
        };
        std::visit(read, setting.member);
    }
    return settings;
}

void writeSetting(DefaultsStore& store, const Settings& settings, const Setting::Member& member)
{
    const auto* const setting = std::ranges::find(allSettings, member, &Setting::member);
    store.setValue(setting->key, valueOf(*setting, settings));
}

void writeSettings(DefaultsStore& store, const Settings& settings)
{
    for (const auto& setting : allSettings)
        store.setValue(setting.key, valueOf(setting, settings));
}

} // namespace clavo
