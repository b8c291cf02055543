// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace clavo
{

/// A system-wide keyboard shortcut that runs an action when it is pressed.
///
/// All hot keys share one action: that of the hot key constructed last, even after its destruction.
/// Only one hot key is meant to exist. Thread: main, also for the action.
class GlobalHotKey
{
public:
    static constexpr std::int64_t kKey = 40; // Virtual key code of the K key.
    static constexpr std::int64_t cmdKey = HotKeyModifier::cmdKey;
    static constexpr std::int64_t shiftKey = HotKeyModifier::shiftKey;

    /// Registers the shortcut. If that is refused, no press is ever reported. A number outside
    /// 0…4294967295 is fatal. An empty action does nothing.
    GlobalHotKey(HotKeyService& service, std::int64_t keyCode, std::int64_t modifiers,
                 std::function<void()> newAction);
    ~GlobalHotKey(); // Unregisters it.
    GlobalHotKey(const GlobalHotKey&) = delete;
    GlobalHotKey& operator=(const GlobalHotKey&) = delete;

private:
    static void runAction();

    static std::function<void()> action;

    HotKeyService& m_service;
    std::optional<HotKeyRef> m_ref;
};

} // namespace clavo
