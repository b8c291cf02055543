// SPDX-License-Identifier: MIT
#include "platform/x11/X11TrayHosts.h"

#include "platform/x11/Xcb.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

constexpr xcb_window_t noWindow = XCB_WINDOW_NONE;
constexpr xcb_atom_t noAtom = XCB_ATOM_NONE;
constexpr std::uint32_t requestDock = 0; // Of the opcodes of the system-tray protocol.
constexpr std::uint8_t sentBySomebody = 0x80;

xcb_intern_atom_cookie_t ask(xcb_connection_t* server, std::string_view atom)
{
    return xcb_intern_atom(server, false, static_cast<std::uint16_t>(atom.size()), atom.data());
}

xcb_atom_t answer(xcb_connection_t* server, xcb_intern_atom_cookie_t cookie)
{
    const xcb::Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(server, cookie, nullptr)};
    return reply ? reply->atom : noAtom;
}

} // namespace

class X11TrayHosts::Watch
{
public:
    Watch(const std::string& display, Receiver receiver)
        : m_receiver(std::move(receiver)), m_desktop(xcb::connect(display))
    {
        m_soon.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { drain(); });
    }

    void start()
    {
        if (!server())
            return m_receiver(TrayHost::none);
        m_readable.emplace(xcb_get_file_descriptor(server()), QSocketNotifier::Read);
        QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { drain(); });

        const auto selection =
            ask(server(), "_NET_SYSTEM_TRAY_S" + std::to_string(m_desktop.screen));
        const auto manager = ask(server(), "MANAGER");
        const auto opcode = ask(server(), "_NET_SYSTEM_TRAY_OPCODE");
        m_selection = answer(server(), selection);
        m_manager = answer(server(), manager);
        m_opcode = answer(server(), opcode);

        // Announcements go to the root window. They are listened to before the host is asked for.
        follow(m_desktop.root);
        const xcb::Owned<xcb_get_selection_owner_reply_t> owner{xcb_get_selection_owner_reply(
            server(), xcb_get_selection_owner(server(), m_selection), nullptr)};
        setHost(owner ? owner->owner : noWindow);
        m_soon.start(); // The replies may have brought events along.
    }

    /// On the application's own connection, which has made the window before.
    void dock(xcb_window_t window)
    {
        const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        if (m_host == noWindow || !application)
            return;
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = m_host;
        event.type = m_opcode;
        event.data.data32[0] = XCB_CURRENT_TIME;
        event.data.data32[1] = requestDock;
        event.data.data32[2] = window;
        xcb_send_event(application->connection(), false, m_host, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(application->connection());
    }

private:
    [[nodiscard]] xcb_connection_t* server() const { return m_desktop.connection.get(); }

    void follow(xcb_window_t window)
    {
        const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(server(), window, XCB_CW_EVENT_MASK, &structure);
        xcb_flush(server());
    }

    void setHost(xcb_window_t host)
    {
        m_host = host;
        if (m_host != noWindow)
            follow(m_host);
        m_receiver(m_host == noWindow ? TrayHost::none : TrayHost::xembed);
    }

    void drain()
    {
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())})
            handle(*event);
        if (xcb_connection_has_error(server()) != 0) {
            m_readable.reset();
            if (m_host != noWindow)
                setHost(noWindow);
        }
    }

    void handle(const xcb_generic_event_t& event)
    {
        switch (event.response_type & ~sentBySomebody) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.type == m_manager && message.data.data32[1] == m_selection)
                setHost(message.data.data32[2]);
            break;
        }
        case XCB_DESTROY_NOTIFY:
            lost(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
            break;
        case 0: // A window that was gone before it could be followed.
            lost(reinterpret_cast<const xcb_value_error_t&>(event).bad_value);
            break;
        default:
            break;
        }
    }

    void lost(xcb_window_t window)
    {
        if (window == m_host && m_host != noWindow)
            setHost(noWindow);
    }

    Receiver m_receiver;
    xcb::Desktop m_desktop;
    std::optional<QSocketNotifier> m_readable;
    QTimer m_soon; // Drains in the next turn of the event loop.
    xcb_atom_t m_selection = noAtom;
    xcb_atom_t m_manager = noAtom;
    xcb_atom_t m_opcode = noAtom;
    xcb_window_t m_host = noWindow;
};

X11TrayHosts::X11TrayHosts(std::string display) : m_display(std::move(display)) {}

X11TrayHosts::~X11TrayHosts() = default;

void X11TrayHosts::watch(Receiver receiver)
{
    m_watch = std::make_unique<Watch>(m_display, std::move(receiver));
    m_watch->start();
}

void X11TrayHosts::dock(std::uint32_t window)
{
    if (m_watch)
        m_watch->dock(window);
}

} // namespace clavo
