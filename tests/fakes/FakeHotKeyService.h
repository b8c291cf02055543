// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <algorithm>
#include <map>
#include <utility>

namespace clavo
{

/// Shortcuts pressed by hand.
class FakeHotKeyService final : public HotKeyService
{
public:
    struct Registration {
        HotKey hotKey;
        std::function<void()> pressed;
    };

    bool refuses = false; // Every further registration.
    std::map<HotKeyRef, Registration> registrations;

    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override
    {
        if (refuses || find(hotKey.keyCode, hotKey.modifiers) != registrations.end())
            return std::nullopt;
        registrations[++m_lastRef] = {.hotKey = hotKey, .pressed = std::move(pressed)};
        return m_lastRef;
    }

    void unregisterHotKey(HotKeyRef ref) override { registrations.erase(ref); }

    void press(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        if (const auto found = find(keyCode, modifiers); found != registrations.end()) {
            const auto pressed = found->second.pressed; // It may unregister itself.
            pressed();
        }
    }

private:
    std::map<HotKeyRef, Registration>::iterator find(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        return std::find_if(registrations.begin(), registrations.end(), [&](const auto& each) {
            const auto& hotKey = each.second.hotKey;
            return hotKey.keyCode == keyCode && hotKey.modifiers == modifiers;
        });
    }

    HotKeyRef m_lastRef = 0;
};

} // namespace clavo
