// SPDX-License-Identifier: MIT
#include "desktop/user/Hands.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace clavo
{
namespace
{

struct Free {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
template <typename T> using Owned = std::unique_ptr<T, Free>;

int keycode(std::uint32_t evdevCode)
{
    return static_cast<int>(evdevCode) + 8;
}

xcb_input_device_id_t deviceNamed(xcb_connection_t* connection, std::string_view name)
{
    const Owned<xcb_input_xi_query_device_reply_t> reply{xcb_input_xi_query_device_reply(
        connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL_MASTER), nullptr)};
    if (!reply)
        return 0;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        if (std::string_view(xcb_input_xi_device_info_name(each.data), each.data->name_len) == name)
            return each.data->deviceid;
    }
    return 0;
}

} // namespace

Hands::Hands(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr))
{
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    free(xcb_input_xi_query_version_reply(m_connection,
                                          xcb_input_xi_query_version(m_connection, 2, 1), nullptr));
}

Hands::~Hands()
{
    xcb_disconnect(m_connection);
}

void Hands::press(std::uint32_t evdevCode)
{
    fake(XCB_KEY_PRESS, keycode(evdevCode));
    sync();
}

void Hands::release(std::uint32_t evdevCode)
{
    fake(XCB_KEY_RELEASE, keycode(evdevCode));
    sync();
}

void Hands::strike(std::uint32_t evdevCode)
{
    press(evdevCode);
    release(evdevCode);
}

void Hands::pressButton(int button)
{
    fake(XCB_BUTTON_PRESS, button);
    sync();
}

void Hands::releaseButton(int button)
{
    fake(XCB_BUTTON_RELEASE, button);
    sync();
}

void Hands::click(int button)
{
    pressButton(button);
    releaseButton(button);
}

void Hands::movePointer(int x, int y)
{
    fake(XCB_MOTION_NOTIFY, 0, x, y); // Detail 0: absolute.
    sync();
}

void Hands::moveToScreen(int number)
{
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    while (number-- > 0)
        xcb_screen_next(&roots);
    xcb_warp_pointer(m_connection, XCB_WINDOW_NONE, roots.data->root, 0, 0, 0, 0, 10, 10);
    sync();
}

void Hands::strikeInABurst(std::uint32_t evdevCode, int times)
{
    for (int i = 0; i < times; ++i) {
        fake(XCB_KEY_PRESS, keycode(evdevCode));
        fake(XCB_KEY_RELEASE, keycode(evdevCode));
    }
    sync();
}

void Hands::openWindow()
{
    const auto window = xcb_generate_id(m_connection);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(m_connection, window);
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    sync();
}

int Hands::pressesInWindow()
{
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        if ((event->response_type & 0x7F) == XCB_KEY_PRESS)
            ++m_pressesInWindow;
    }
    return m_pressesInWindow;
}

bool Hands::grab()
{
    constexpr auto async = XCB_GRAB_MODE_ASYNC;
    const Owned<xcb_grab_keyboard_reply_t> keyboard{xcb_grab_keyboard_reply(
        m_connection, xcb_grab_keyboard(m_connection, 0, m_root, XCB_CURRENT_TIME, async, async),
        nullptr)};
    const Owned<xcb_grab_pointer_reply_t> pointer{xcb_grab_pointer_reply(
        m_connection,
        xcb_grab_pointer(m_connection, 0, m_root, XCB_EVENT_MASK_BUTTON_PRESS, async, async,
                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr)};
    return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
           pointer->status == XCB_GRAB_STATUS_SUCCESS;
}

bool Hands::grabKey(std::uint32_t evdevCode, std::uint16_t modifiers)
{
    constexpr auto async = XCB_GRAB_MODE_ASYNC;
    const auto key = static_cast<xcb_keycode_t>(keycode(evdevCode));
    const Owned<xcb_generic_error_t> refusal{xcb_request_check(
        m_connection, xcb_grab_key_checked(m_connection, 0, m_root, modifiers, key, async, async))};
    return !refusal;
}

std::uint16_t Hands::modifiers()
{
    const Owned<xcb_query_pointer_reply_t> pointer{
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr)};
    return pointer ? pointer->mask & 0xFF : 0;
}

bool Hands::makeModifier(unsigned modifier, const std::vector<std::uint32_t>& evdevCodes)
{
    const Owned<xcb_get_modifier_mapping_reply_t> reply{xcb_get_modifier_mapping_reply(
        m_connection, xcb_get_modifier_mapping(m_connection), nullptr)};
    if (!reply)
        return false;
    constexpr std::size_t modifierCount = 8;
    const std::size_t width = reply->keycodes_per_modifier;
    std::vector<xcb_keycode_t> keycodes(modifierCount * width);
    std::copy_n(xcb_get_modifier_mapping_keycodes(reply.get()), keycodes.size(), keycodes.begin());
    for (const auto evdevCode : evdevCodes) // No key is two modifiers.
        std::replace(keycodes.begin(), keycodes.end(),
                     static_cast<xcb_keycode_t>(keycode(evdevCode)), xcb_keycode_t{0});
    for (std::size_t slot = 0; slot < width; ++slot)
        keycodes[modifier * width + slot] =
            slot < evdevCodes.size() ? static_cast<xcb_keycode_t>(keycode(evdevCodes[slot])) : 0;
    const Owned<xcb_set_modifier_mapping_reply_t> result{xcb_set_modifier_mapping_reply(
        m_connection,
        xcb_set_modifier_mapping(m_connection, reply->keycodes_per_modifier, keycodes.data()),
        nullptr)};
    return result && result->status == XCB_MAPPING_STATUS_SUCCESS;
}

void Hands::grabServer()
{
    xcb_grab_server(m_connection);
    sync();
}

void Hands::ungrabServer()
{
    xcb_ungrab_server(m_connection);
    sync();
}

std::uint16_t Hands::takeSecondPair()
{
    // The name fills whole words on the wire.
    struct {
        xcb_input_add_master_t head;
        char name[8];
    } const pair{.head = {.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER,
                          .len = 4,
                          .name_len = 6,
                          .send_core = 1,
                          .enable = 1},
                 .name = "second"};
    xcb_input_xi_change_hierarchy(m_connection, 1,
                                  reinterpret_cast<const xcb_input_hierarchy_change_t*>(&pair));
    xcb_input_xi_set_client_pointer(m_connection, XCB_WINDOW_NONE,
                                    deviceNamed(m_connection, "second pointer"));
    return deviceNamed(m_connection, "second keyboard");
}

void Hands::removeSecondPair()
{
    const xcb_input_remove_master_t pair{
        .type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_REMOVE_MASTER,
        .len = 3,
        .deviceid = deviceNamed(m_connection, "second pointer"),
        .return_mode = XCB_INPUT_CHANGE_MODE_FLOAT,
        .pad0 = 0,
        .return_pointer = 0,
        .return_keyboard = 0,
    };
    xcb_input_xi_change_hierarchy(m_connection, 1,
                                  reinterpret_cast<const xcb_input_hierarchy_change_t*>(&pair));
    sync();
}

void Hands::fake(std::uint8_t type, int detail, int x, int y)
{
    xcb_test_fake_input(m_connection, type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                        0);
}

void Hands::sync()
{
    free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace clavo
