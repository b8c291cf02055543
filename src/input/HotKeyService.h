// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace clavo
{

/// The numbers of the modifiers a shortcut may ask for; the same on every platform.
namespace HotKeyModifier
{
inline constexpr std::uint32_t cmdKey = 256; // The logo key, where there is no Command key.
inline constexpr std::uint32_t shiftKey = 512;
} // namespace HotKeyModifier

/// A shortcut and the identifier it is registered under.
struct HotKey {
    std::uint32_t keyCode = 0;   // Virtual key code: the key's place, whatever it types.
    std::uint32_t modifiers = 0; // Sum of HotKeyModifier: these and no others, locks aside.
    std::uint32_t signature = 0; // Four characters that stand for the program.
    std::uint32_t number = 0;    // Tells the program's own hot keys apart.
};

/// One registration at the service.
using HotKeyRef = std::uint32_t;

/// The system's shortcuts that are heard whichever application is in front, and by nobody else.
///
/// `pressed` is called once for each press: neither for the release nor for the repeats of a key
/// that is held. registerHotKey() returns nothing for a shortcut that this program has registered
/// already and where the platform refuses. A registration that is returned may still be idle:
/// another program may have the shortcut, which not every platform tells. unregisterHotKey() takes
/// a reference once; nothing is called afterwards. Thread: main, also that of `pressed`, which may
/// register and unregister.
class HotKeyService
{
public:
    virtual ~HotKeyService() = default;

    [[nodiscard]] virtual std::optional<HotKeyRef>
    registerHotKey(const HotKey& hotKey, std::function<void()> pressed) = 0;
    virtual void unregisterHotKey(HotKeyRef ref) = 0;
};

} // namespace clavo
