// SPDX-License-Identifier: MIT
#include "platform/x11/Xkb.h"

#include "platform/x11/XServer.h"

#define explicit explicit_ // The name of a member.
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <array>
#include <span>

namespace clavo::xcb
{
namespace
{

// Keysyms of X.
constexpr std::array<xcb_keysym_t, 2> superKeysyms{0xFFEB, 0xFFEC}; // Left and right.
constexpr std::array<xcb_keysym_t, 2> lockKeysyms{0xFF7F, 0xFF14};  // Num and Scroll Lock.

/// The modifiers of all keys that have one of the keysyms.
std::uint16_t modifiersOf(const xcb_get_modifier_mapping_reply_t& keycodes,
                          const xcb_get_keyboard_mapping_reply_t& keysyms, unsigned firstKeycode,
                          std::span<const xcb_keysym_t> wanted)
{
    const std::span all{
        xcb_get_keyboard_mapping_keysyms(&keysyms),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(&keysyms))};
    const std::size_t width = keysyms.keysyms_per_keycode;
    const auto* const entries = xcb_get_modifier_mapping_keycodes(&keycodes);
    unsigned found = 0;
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(&keycodes); ++i) {
        const unsigned keycode = entries[i];
        const auto first = (keycode - firstKeycode) * width;
        if (keycode < firstKeycode || first + width > all.size()) // An empty entry is 0.
            continue;
        const auto own = all.subspan(first, width);
        if (std::ranges::find_first_of(own, wanted) != own.end())
            found |= 1U << i / keycodes.keycodes_per_modifier;
    }
    return static_cast<std::uint16_t>(found);
}

/// The modifiers from both replies, of which the second has arrived.
Modifiers modifiers(xcb_connection_t* server, const ModifierQuery& query,
                    const xcb_get_keyboard_mapping_reply_t* keysyms)
{
    // Arrived before the other, so this does not wait.
    const Owned<xcb_get_modifier_mapping_reply_t> keycodes{
        xcb_get_modifier_mapping_reply(server, query.keycodes, nullptr)};
    if (!keysyms || !keycodes)
        return {};
    const unsigned first = xcb_get_setup(server)->min_keycode;
    const auto locks = modifiersOf(*keycodes, *keysyms, first, lockKeysyms);
    return {.super = modifiersOf(*keycodes, *keysyms, first, superKeysyms),
            .locks = static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | locks)};
}

} // namespace

std::optional<std::uint8_t> useXkb(xcb_connection_t* server)
{
    const auto* extension = xcb_get_extension_data(server, &xcb_xkb_id);
    if (!extension || extension->present == 0)
        return std::nullopt;
    const Owned<xcb_xkb_use_extension_reply_t> version{xcb_xkb_use_extension_reply(
        server, xcb_xkb_use_extension(server, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION),
        nullptr)};
    if (!version || version->supported == 0)
        return std::nullopt;

    constexpr auto repeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const Owned<xcb_xkb_per_client_flags_reply_t> flags{xcb_xkb_per_client_flags_reply(
        server, xcb_xkb_per_client_flags(server, XCB_XKB_ID_USE_CORE_KBD, repeat, repeat, 0, 0, 0),
        nullptr)};
    if (!flags || (flags->value & repeat) == 0)
        return std::nullopt;

    // A key of another keyboard brings that keyboard's map: reported as a new keyboard.
    constexpr std::uint16_t changes =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(server, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, parts, parts,
                          nullptr);
    return extension->first_event;
}

ModifierQuery queryModifiers(xcb_connection_t* server)
{
    const auto* setup = xcb_get_setup(server);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    return {.keycodes = xcb_get_modifier_mapping(server),
            .keysyms = xcb_get_keyboard_mapping(server, setup->min_keycode, count)};
}

Modifiers readModifiers(xcb_connection_t* server)
{
    const auto query = queryModifiers(server);
    const Owned<xcb_get_keyboard_mapping_reply_t> keysyms{
        xcb_get_keyboard_mapping_reply(server, query.keysyms, nullptr)};
    return modifiers(server, query, keysyms.get());
}

std::optional<Modifiers> pollModifiers(xcb_connection_t* server, const ModifierQuery& query)
{
    const auto keysyms =
        pollReply<xcb_get_keyboard_mapping_reply_t>(server, query.keysyms.sequence);
    if (!keysyms)
        return std::nullopt;
    return modifiers(server, query, keysyms->get());
}

} // namespace clavo::xcb
