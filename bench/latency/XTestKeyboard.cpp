// SPDX-License-Identifier: MIT
#include "latency/XTestKeyboard.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>

namespace clavo::latency
{
namespace
{

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply> using ReplyPtr = std::unique_ptr<Reply, Free>;

constexpr xcb_keysym_t returnSymbol = 0xFF0D;

} // namespace

void XTestKeyboard::Close::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

std::unique_ptr<XTestKeyboard> XTestKeyboard::open()
{
    std::unique_ptr<XTestKeyboard> keyboard(new XTestKeyboard(xcb_connect(nullptr, nullptr)));
    auto* const connection = keyboard->m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        return {};
    const ReplyPtr<xcb_test_get_version_reply_t> version(
        xcb_test_get_version_reply(connection, xcb_test_get_version(connection, 2, 2), nullptr));
    if (!version || !keyboard->readLayout())
        return {};
    return keyboard;
}

bool XTestKeyboard::readLayout()
{
    const auto* const setup = xcb_get_setup(m_connection.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const ReplyPtr<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        m_connection.get(), xcb_get_keyboard_mapping(m_connection.get(), setup->min_keycode, count),
        nullptr));
    if (!mapping)
        return false;
    const auto* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (std::size_t i = 0; i < count; ++i) {
        // The symbols of these characters are numbered as the characters are.
        auto symbol = symbols[i * mapping->keysyms_per_keycode];
        if (symbol == returnSymbol)
            symbol = '\n';
        if (symbol < m_keys.size() && m_keys[symbol] == 0)
            m_keys[symbol] = static_cast<std::uint8_t>(setup->min_keycode + i);
    }
    return true;
}

std::optional<std::uint8_t> XTestKeyboard::key(char character) const
{
    const auto key = m_keys[static_cast<unsigned char>(character)];
    return key != 0 ? std::optional(key) : std::nullopt;
}

Moment XTestKeyboard::send(std::uint8_t type, std::uint8_t key)
{
    auto* const connection = m_connection.get();
    xcb_test_fake_input(connection, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    const auto moment = std::chrono::steady_clock::now();
    xcb_flush(connection);
    return moment;
}

Moment XTestKeyboard::press(std::uint8_t key)
{
    return send(XCB_KEY_PRESS, key);
}

Moment XTestKeyboard::release(std::uint8_t key)
{
    return send(XCB_KEY_RELEASE, key);
}

nanoseconds XTestKeyboard::roundTrip()
{
    const auto before = std::chrono::steady_clock::now();
    const ReplyPtr<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    return std::chrono::steady_clock::now() - before;
}

} // namespace clavo::latency
