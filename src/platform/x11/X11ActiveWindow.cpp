// SPDX-License-Identifier: MIT
#include "platform/x11/X11ActiveWindow.h"

#include "platform/x11/XServer.h"

#include <xcb/xcbext.h> // Declares xcb_poll_for_reply().

#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

constexpr xcb_atom_t noAtom = XCB_ATOM_NONE;
constexpr std::uint8_t sentByClient = 0x80; // Of the response type: another client sent the event.

xcb_atom_t atom(xcb_connection_t* server, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(server, false, static_cast<std::uint16_t>(name.size()), name.data());
    const xcb::Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(server, cookie, nullptr)};
    return reply ? reply->atom : noAtom;
}

/// The number in the property; 0 if it holds none.
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
        xcb_atom_t property = noAtom;
        unsigned sequence = 0;
    };

    [[nodiscard]] bool prepareConnection() override
    {
        m_active = atom(m_server.connection(), "_NET_ACTIVE_WINDOW");
        m_owner = atom(m_server.connection(), "_NET_WM_PID");
        const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_server.connection(), m_server.desktop().root,
                                     XCB_CW_EVENT_MASK, &properties);
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
        if ((event.response_type & ~sentByClient) != XCB_PROPERTY_NOTIFY)
            return;
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_active)
            request(m_server.desktop().root, m_active, XCB_ATOM_WINDOW);
    }

    void takeReplies() override
    {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (!m_question ||
            xcb_poll_for_reply(m_server.connection(), m_question->sequence, &reply, &error) == 0)
            return;
        const xcb::Owned<xcb_get_property_reply_t> answer{
            static_cast<xcb_get_property_reply_t*>(reply)};
        const xcb::Owned<xcb_generic_error_t> failure{error}; // The window is gone again.
        const auto question = *std::exchange(m_question, std::nullopt);
        const auto value = number(answer.get());
        if (question.property == m_active && value != XCB_WINDOW_NONE)
            request(value, m_owner, XCB_ATOM_CARDINAL);
        else
            m_receiver(question.property == m_owner ? static_cast<pid_t>(value) : 0);
    }

    std::function<void(pid_t)> m_receiver;
    XServer m_server;
    xcb_atom_t m_active = noAtom;
    xcb_atom_t m_owner = noAtom;
    std::optional<Question> m_question; // Not answered yet.
};

} // namespace

std::unique_ptr<X11ActiveWindow> makeX11ActiveWindow(std::function<void(pid_t)> receiver,
                                                     std::string display)
{
    return std::make_unique<ActiveWindow>(std::move(receiver), std::move(display));
}

} // namespace clavo
