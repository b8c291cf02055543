// SPDX-License-Identifier: MIT
#include "platform/x11/X11ActiveWindow.h"

#include "platform/x11/Xcb.h"

#include <QSocketNotifier>
#include <QTimer>
#include <xcb/xcbext.h>

#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

constexpr xcb_atom_t noAtom = XCB_ATOM_NONE;
constexpr std::uint8_t sentBySomebody = 0x80;

xcb_atom_t atom(xcb_connection_t* server, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(server, false, static_cast<std::uint16_t>(name.size()), name.data());
    const xcb::Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(server, cookie, nullptr)};
    return reply ? reply->atom : noAtom;
}

/// The one number that the property holds; 0 where it does not.
std::uint32_t number(const xcb_get_property_reply_t* property)
{
    std::uint32_t value = 0;
    if (property && property->format == 32 && xcb_get_property_value_length(property) > 0)
        std::memcpy(&value, xcb_get_property_value(property), sizeof value);
    return value;
}

} // namespace

class X11ActiveWindow::Watch
{
public:
    Watch(Receiver receiver, const std::string& display)
        : m_receiver(std::move(receiver)), m_desktop(xcb::connect(display))
    {
        if (!server())
            return;
        m_active = atom(server(), "_NET_ACTIVE_WINDOW");
        m_owner = atom(server(), "_NET_WM_PID");
        m_readable.emplace(xcb_get_file_descriptor(server()), QSocketNotifier::Read);
        QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { drain(); });
        m_soon.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { drain(); });

        const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(server(), m_desktop.root, XCB_CW_EVENT_MASK, &properties);
        ask(m_desktop.root, m_active, XCB_ATOM_WINDOW);
        m_soon.start(); // What came with the last reply does not make the socket readable.
    }

private:
    /// A property that has been asked for.
    struct Question {
        xcb_atom_t property = noAtom;
        unsigned sequence = 0;
    };

    [[nodiscard]] xcb_connection_t* server() const { return m_desktop.connection.get(); }

    /// An answer still to come to an earlier question is dropped.
    void ask(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
    {
        if (m_question)
            xcb_discard_reply(server(), m_question->sequence);
        const auto cookie = xcb_get_property(server(), false, window, property, type, 0, 1);
        m_question = {property, cookie.sequence};
        xcb_flush(server());
    }

    void drain()
    {
        do {
            while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())})
                handle(*event);
        } while (takeAnswer());
        if (xcb_connection_has_error(server()) != 0)
            m_readable.reset();
    }

    void handle(const xcb_generic_event_t& event)
    {
        if ((event.response_type & ~sentBySomebody) != XCB_PROPERTY_NOTIFY)
            return;
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_active)
            ask(m_desktop.root, m_active, XCB_ATOM_WINDOW);
    }

    /// False when there is none yet.
    bool takeAnswer()
    {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (!m_question || xcb_poll_for_reply(server(), m_question->sequence, &reply, &error) == 0)
            return false;
        const xcb::Owned<xcb_get_property_reply_t> answer{
            static_cast<xcb_get_property_reply_t*>(reply)};
        const xcb::Owned<xcb_generic_error_t> failure{error}; // The window is gone again.
        const auto question = *std::exchange(m_question, std::nullopt);
        const auto value = number(answer.get());
        if (question.property == m_active && value != XCB_WINDOW_NONE)
            ask(value, m_owner, XCB_ATOM_CARDINAL);
        else
            m_receiver(question.property == m_owner ? static_cast<pid_t>(value) : 0);
        return true;
    }

    Receiver m_receiver;
    xcb::Desktop m_desktop;
    std::optional<QSocketNotifier> m_readable;
    QTimer m_soon;
    xcb_atom_t m_active = noAtom;
    xcb_atom_t m_owner = noAtom;
    std::optional<Question> m_question; // Not answered yet.
};

X11ActiveWindow::X11ActiveWindow(Receiver receiver, const std::string& display)
    : m_watch(std::make_unique<Watch>(std::move(receiver), display))
{
}

X11ActiveWindow::~X11ActiveWindow() = default;

} // namespace clavo
