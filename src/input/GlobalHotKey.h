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
/// The action belongs to the class: a press of any hot key runs that of the one constructed last,
/// and destroying a hot key leaves it as it is. Only one hot key is meant to exist. Thread: main,
/// where the action runs too.
class GlobalHotKey
{
public:
    static constexpr std::int64_t kKey = 40; // Virtual key code of the K key.
    static constexpr std::int64_t cmdKey = HotKeyModifier::cmdKey;
    static constexpr std::int64_t shiftKey = HotKeyModifier::shiftKey;

    /// Registers the shortcut. A refusal is silent: presses never arrive then. Both numbers lie in
    /// 0...4294967295; any other ends the program. An empty action does nothing.
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
