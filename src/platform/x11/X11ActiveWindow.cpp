// SPDX-License-Identifier: MIT
#include "platform/x11/X11ActiveWindow.h"

#include "platform/x11/XServer.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

/// The number in the property; 0 if it contains none.
std::uint32_t number(const xcb_get_property_reply_t* property)
{
    std::uint32_t value = 0;
    if (property && property->format == 32 && xcb_get_property_value_length(property) > 0)
        std::memcpy(&value, xcb_get_property_value(property), sizeof value);
    return value;
}

class ActiveWindow final : public X11ActiveWindow, private XServer::Client
{
public:
    ActiveWindow(std::function<void(pid_t)> receiver, std::string display)
        : m_receiver(std::move(receiver)), m_server(*this, std::move(display))
    {
        (void)m_server.connect(); // Without a server no window is active.
    }

private:
    /// A property that has been requested.
    struct Question {
        xcb_atom_t property = XCB_ATOM_NONE;
        unsigned sequence = 0;
    };

    [[nodiscard]] bool prepareConnection() override
    {
        const auto atoms = xcb::atoms(m_server.connection(), {"_NET_ACTIVE_WINDOW", "_NET_WM_PID"});
        m_active = atoms[0];
        m_owner = atoms[1];
        xcb::selectEvents(m_server.connection(), m_server.desktop().root,
                          XCB_EVENT_MASK_PROPERTY_CHANGE);
        request(m_server.desktop().root, m_active, XCB_ATOM_WINDOW);
        return true;
    }

    /// Drops the reply to an earlier request.
    void request(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
    {
        if (m_question)
            xcb_discard_reply(m_server.connection(), m_question->sequence);
        const auto cookie =
            xcb_get_property(m_server.connection(), false, window, property, type, 0, 1);
        m_question = {property, cookie.sequence};
        m_server.noteRequests();
    }

    void handleEvent(const xcb_generic_event_t& event) override
    {
        if (xcb::typeOf(event) != XCB_PROPERTY_NOTIFY)
            return;
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_active)
            request(m_server.desktop().root, m_active, XCB_ATOM_WINDOW);
    }

    void takeReplies() override
    {
        if (!m_question)
            return;
        const auto reply =
            xcb::pollReply<xcb_get_property_reply_t>(m_server.connection(), m_question->sequence);
        if (!reply)
            return;
        const auto question = *std::exchange(m_question, std::nullopt);
        const auto value = number(reply->get()); // 0 if the window is gone.
        if (question.property == m_active && value != XCB_WINDOW_NONE)
            request(value, m_owner, XCB_ATOM_CARDINAL);
        else
            m_receiver(question.property == m_owner ? static_cast<pid_t>(value) : 0);
    }

    std::function<void(pid_t)> m_receiver;
    XServer m_server;
    xcb_atom_t m_active = XCB_ATOM_NONE;
    xcb_atom_t m_owner = XCB_ATOM_NONE;
    std::optional<Question> m_question; // Awaits its reply.
};

} // namespace

std::unique_ptr<X11ActiveWindow> makeX11ActiveWindow(std::function<void(pid_t)> receiver,
                                                     std::string display)
{
    return std::make_unique<ActiveWindow>(std::move(receiver), std::move(display));
}

} // namespace clavo
