// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace clavo
{

/// The numbers of a shortcut's modifiers; the same on every platform.
namespace HotKeyModifier
{
inline constexpr std::uint32_t cmdKey = 256; // The logo key of keyboards without Command.
inline constexpr std::uint32_t shiftKey = 512;
} // namespace HotKeyModifier

/// A shortcut and the identifier it is registered under.
struct HotKey {
    std::uint32_t keyCode = 0;   // Virtual key code: the key's position, not its character.
    std::uint32_t modifiers = 0; // Sum of HotKeyModifier: exactly these, apart from locks.
    std::uint32_t signature = 0; // Four characters that identify the program.
    std::uint32_t number = 0;    // Identifies the hot key within the program.
};

/// One registration at the service.
using HotKeyRef = std::uint32_t;

/// System-wide shortcuts, whose keys reach this program and not the application in front.
///
/// `pressed` is called once per press, not for the release or the repeats of a held key.
/// registerHotKey() returns nothing if this program has registered the shortcut already or the
/// platform refuses. A successful registration may have no effect, because another program has the
/// shortcut and the platform does not report that. unregisterHotKey() is called once per reference;
/// nothing is called afterwards. Thread: main, also for `pressed`, which may register and
/// unregister.
class HotKeyService
{
public:
    virtual ~HotKeyService() = default;

    [[nodiscard]] virtual std::optional<HotKeyRef>
    registerHotKey(const HotKey& hotKey, std::function<void()> pressed) = 0;
    virtual void unregisterHotKey(HotKeyRef ref) = 0;
};

} // namespace clavo
