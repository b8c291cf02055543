// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace clavo::xcb
{

/// Announces the keyboard extension: a held key then repeats as presses without releases, and an
/// event reports every change of the keyboard's map. Returns the response type of these events;
/// nothing if the server lacks the extension.
[[nodiscard]] std::optional<std::uint8_t> useXkb(xcb_connection_t* server);

/// The bits of a key event's state that stand for these keys in the keyboard's map.
struct Modifiers {
    std::uint16_t super = 0; // Usually one bit: the logo keys.
    std::uint16_t locks = 0; // Caps Lock; Num Lock and Scroll Lock if they are modifiers.
};

/// The pending requests for the modifiers.
struct ModifierQuery {
    xcb_get_modifier_mapping_cookie_t keycodes;
    xcb_get_keyboard_mapping_cookie_t keysyms;
};

/// Requests the modifiers; sent with the next flush.
[[nodiscard]] ModifierQuery queryModifiers(xcb_connection_t* server);

/// Requests the modifiers and waits for the reply.
[[nodiscard]] Modifiers readModifiers(xcb_connection_t* server);

/// The modifiers without waiting; nothing until the reply has arrived. Not to be called after that.
[[nodiscard]] std::optional<Modifiers> pollModifiers(xcb_connection_t* server,
                                                     const ModifierQuery& query);

} // namespace clavo::xcb
