// SPDX-License-Identifier: MIT
#include "platform/x11/XServer.h"

#include <algorithm>
#include <utility>

namespace clavo
{

xcb::Desktop xcb::connect(const std::string& display)
{
    int screen = 0;
    Connection connection{xcb_connect(display.empty() ? nullptr : display.c_str(), &screen)};
    if (xcb_connection_has_error(connection.get()) != 0)
        return {};
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (int i = 0; i < screen && roots.rem > 1; ++i)
        xcb_screen_next(&roots);
    return {.connection = std::move(connection), .root = roots.data->root, .screen = screen};
}

std::vector<xcb_atom_t> xcb::atoms(xcb_connection_t* server,
                                   std::initializer_list<std::string> names)
{
    std::vector<xcb_intern_atom_cookie_t> requests;
    for (const auto& name : names)
        requests.push_back(
            xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    std::vector<xcb_atom_t> atoms;
    for (const auto& request : requests) {
        const Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(server, request, nullptr)};
        atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
    }
    return atoms;
}

void xcb::selectEvents(xcb_connection_t* server, xcb_window_t window, xcb_event_mask_t events)
{
    const std::uint32_t mask = events;
    xcb_change_window_attributes(server, window, XCB_CW_EVENT_MASK, &mask);
}

std::uint8_t xcb::typeOf(const xcb_generic_event_t& event)
{
    return event.response_type & 0x7F;
}

XServer::XServer(Client& client, std::string display)
    : m_client(client), m_display(std::move(display))
{
    m_drainTimer.setSingleShot(true);
    m_drainTimer.callOnTimeout([this] { drain(); });
    m_retryTimer.setSingleShot(true);
    m_retryTimer.callOnTimeout([this] {
        if (!connect())
            connectAfter(
                std::clamp(2 * m_retryTimer.intervalAsDuration(), firstPause, longestPause));
    });
}

bool XServer::connect()
{
    m_readable.reset(); // Before its descriptor is closed.
    m_desktop = xcb::connect(m_display);
    if (!connection() || !m_client.prepareConnection()) {
        m_desktop = {};
        return false;
    }
    m_readable.emplace(xcb_get_file_descriptor(connection()), QSocketNotifier::Read);
    QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { drain(); });
    drainSoon(); // Events may have been read along with the replies.
    return true;
}

void XServer::connectAfter(std::chrono::milliseconds delay)
{
    m_retryTimer.start(delay);
}

/// Takes everything that has arrived. Sending may make xcb read as well, and the socket does not
/// report what has been read already, so after the last flush the queue is always read once more.
void XServer::drain()
{
    if (!connection())
        return;
    while (true) {
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection())})
            m_client.handleEvent(*event);
        m_client.takeReplies();
        if (!std::exchange(m_hasRequests, false))
            break;
        xcb_flush(connection());
    }
    if (xcb_connection_has_error(connection()) != 0) {
        m_readable->setEnabled(false); // Not destroyed: it may be on the stack.
        m_desktop = {};
        m_client.handleLoss();
    }
}

} // namespace clavo
