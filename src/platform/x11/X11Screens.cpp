// SPDX-License-Identifier: MIT
#include "platform/x11/X11Screens.h"

#include "platform/x11/XServer.h"

#include <xcb/randr.h>

#include <chrono>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using Clock = std::chrono::steady_clock;

/// Whether the server has monitors (RandR 1.5).
bool hasMonitors(xcb_connection_t* server)
{
    constexpr std::pair<std::uint32_t, std::uint32_t> needed{1, 5};

    const auto* extension = xcb_get_extension_data(server, &xcb_randr_id);
    if (!extension || extension->present == 0)
        return false;
    const xcb::Owned<xcb_randr_query_version_reply_t> version{xcb_randr_query_version_reply(
        server, xcb_randr_query_version(server, needed.first, needed.second), nullptr)};
    return version && std::pair(version->major_version, version->minor_version) >= needed;
}

std::vector<ScreenExtent> monitors(const xcb::Desktop& desktop)
{
    auto* server = desktop.connection.get();
    const xcb::Owned<xcb_randr_get_monitors_reply_t> reply{xcb_randr_get_monitors_reply(
        server, xcb_randr_get_monitors(server, desktop.root, true), nullptr)};
    std::vector<ScreenExtent> extents;
    if (!reply)
        return extents;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each))
        extents.push_back({.x = static_cast<double>(each.data->x),
                           .width = static_cast<double>(each.data->width)});
    return extents;
}

std::vector<ScreenExtent> wholeDesktop(const xcb::Desktop& desktop)
{
    auto* server = desktop.connection.get();
    const xcb::Owned<xcb_get_geometry_reply_t> root{
        xcb_get_geometry_reply(server, xcb_get_geometry(server, desktop.root), nullptr)};
    if (!root)
        return {};
    return {{.x = 0, .width = static_cast<double>(root->width)}};
}

class X11Screens final : public Screens
{
public:
    explicit X11Screens(std::string display) : m_display(std::move(display)) {}

    [[nodiscard]] std::span<const ScreenExtent> extents() override
    {
        if (!m_desktop.connection && !connect())
            return {};
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())})
            m_isStale = true; // Only changes of the screens and, rarely, of the keymap are sent.
        if (m_isStale) {
            m_isStale = false;
            m_extents = m_hasMonitors ? monitors(m_desktop) : wholeDesktop(m_desktop);
        }
        if (xcb_connection_has_error(server()) != 0) {
            m_desktop = {};
            return {};
        }
        return m_extents;
    }

private:
    [[nodiscard]] xcb_connection_t* server() const { return m_desktop.connection.get(); }

    bool connect()
    {
        const auto now = Clock::now();
        if (now < m_nextAttempt)
            return false;
        m_nextAttempt = now + XServer::firstPause;
        m_desktop = xcb::connect(m_display);
        if (!server())
            return false;
        m_hasMonitors = hasMonitors(server());
        // RandR reports modes and positions; a change of the root window reports monitors.
        xcb::selectEvents(server(), m_desktop.root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        if (m_hasMonitors)
            xcb_randr_select_input(server(), m_desktop.root,
                                   XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                       XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE);
        m_isStale = true;
        return true;
    }

    std::string m_display;
    xcb::Desktop m_desktop;
    bool m_hasMonitors = false;
    bool m_isStale = false;
    std::vector<ScreenExtent> m_extents;
    Clock::time_point m_nextAttempt = Clock::time_point::min();
};

} // namespace

std::unique_ptr<Screens> makeX11Screens(std::string display)
{
    return std::make_unique<X11Screens>(std::move(display));
}

} // namespace clavo
