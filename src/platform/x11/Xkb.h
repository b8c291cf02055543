// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/Xcb.h"

#include <cstdint>
#include <optional>
#include <string>

namespace clavo::xcb
{

/// A connection that knows the keyboard extension. A held key comes as one press after the other
/// without releases, and every change of the keyboard's map is told by an event.
struct Xkb {
    Desktop desktop;
    std::uint8_t event = 0; // The response type of the changes, and of nothing else.
};

/// Connects to the display; nothing if it cannot be reached or does not know the extension.
[[nodiscard]] std::optional<Xkb> connectXkb(const std::string& display);

/// Bits of the modifier state that come with keys, as the keyboard's map gives them.
struct Modifiers {
    std::uint16_t super = 0; // One bit as a rule: the logo keys.
    std::uint16_t locks = 0; // Caps Lock; Num Lock and Scroll Lock where they are modifiers.
};

/// A question about the modifiers that is on its way.
struct ModifierQuery {
    xcb_get_modifier_mapping_cookie_t keycodes;
    xcb_get_keyboard_mapping_cookie_t keysyms;
};

/// Asks; sent with the next flush.
[[nodiscard]] ModifierQuery queryModifiers(xcb_connection_t* server);

/// Asks and waits for the answer.
[[nodiscard]] Modifiers readModifiers(xcb_connection_t* server);

/// The answer; nothing as long as it has not arrived. To be called until then.
[[nodiscard]] std::optional<Modifiers> pollModifiers(xcb_connection_t* server,
                                                     const ModifierQuery& query);

} // namespace clavo::xcb
