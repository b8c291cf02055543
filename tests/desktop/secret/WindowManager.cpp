// SPDX-License-Identifier: MIT
#include "desktop/secret/WindowManager.h"

#include "platform/x11/XServer.h"

#include <cstring>
#include <span>

namespace clavo
{

using xcb::Owned;

WindowManager::WindowManager()
    : m_server(xcb_connect(nullptr, nullptr)),
      m_root(xcb_setup_roots_iterator(xcb_get_setup(m_server)).data->root),
      m_activeWindow(atom("_NET_ACTIVE_WINDOW")), m_process(atom("_NET_WM_PID"))
{
}

WindowManager::~WindowManager()
{
    xcb_disconnect(m_server);
}

bool WindowManager::activate(std::uint32_t process)
{
    const Owned<xcb_query_tree_reply_t> tree{
        xcb_query_tree_reply(m_server, xcb_query_tree(m_server, m_root), nullptr)};
    const std::span windows(xcb_query_tree_children(tree.get()),
                            static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    for (const auto window : windows) {
        if (!isOf(window, process) || !isSeen(window))
            continue;
        xcb_warp_pointer(m_server, XCB_WINDOW_NONE, window, 0, 0, 0, 0, 5, 5);
        xcb_set_input_focus(m_server, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        xcb_change_property(m_server, XCB_PROP_MODE_REPLACE, m_root, m_activeWindow,
                            XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(m_server);
        return true;
    }
    return false;
}

xcb_atom_t WindowManager::atom(std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(m_server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return Owned<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(m_server, cookie, nullptr))->atom;
}

bool WindowManager::isOf(xcb_window_t window, std::uint32_t process)
{
    const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(
        m_server, xcb_get_property(m_server, 0, window, m_process, XCB_ATOM_CARDINAL, 0, 1),
        nullptr)};
    std::uint32_t owner = 0;
    if (reply && xcb_get_property_value_length(reply.get()) == sizeof owner)
        std::memcpy(&owner, xcb_get_property_value(reply.get()), sizeof owner);
    return owner == process;
}

bool WindowManager::isSeen(xcb_window_t window)
{
    const Owned<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(
        m_server, xcb_get_window_attributes(m_server, window), nullptr)};
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

} // namespace clavo
