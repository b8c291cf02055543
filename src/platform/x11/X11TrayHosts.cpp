// SPDX-License-Identifier: MIT
#include "platform/x11/X11TrayHosts.h"

#include "platform/x11/XServer.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

class X11TrayHosts::Watch : private XServer::Client
{
public:
    Watch(const std::string& display, Receiver receiver)
        : m_receiver(std::move(receiver)), m_server(*this, display)
    {
    }

    void start()
    {
        if (!m_server.connect())
            return m_receiver(TrayHost::none);

        const auto selection =
            ask(server(), "_NET_SYSTEM_TRAY_S" + std::to_string(m_server.desktop().screen));
        const auto manager = ask(server(), "MANAGER");
        const auto opcode = ask(server(), "_NET_SYSTEM_TRAY_OPCODE");
        const auto visual = ask(server(), "_NET_SYSTEM_TRAY_VISUAL");
        const auto colors = ask(server(), "_NET_SYSTEM_TRAY_COLORS");
        m_selection = answer(server(), selection);
        m_manager = answer(server(), manager);
        m_opcode = answer(server(), opcode);
        m_visual = answer(server(), visual);
        m_colors = answer(server(), colors);

        // Announcements go to the root window. They are listened to before the host is asked for.
        follow(m_server.desktop().root);
        const xcb::Owned<xcb_get_selection_owner_reply_t> owner{xcb_get_selection_owner_reply(
            server(), xcb_get_selection_owner(server(), m_selection), nullptr)};
        setHost(owner ? owner->owner : noWindow);
    }

    [[nodiscard]] TrayAppearance appearance()
    {
        if (m_host == noWindow)
            return {};
        constexpr double brightest = 0xffff;
        m_server.drainSoon(); // The answers may bring events along.
        const auto visualAsked = askHost(m_visual, XCB_ATOM_VISUALID, 1);
        const auto colorsAsked = askHost(m_colors, XCB_ATOM_CARDINAL, 3);
        TrayAppearance look;
        if (const auto visual = hostsAnswer(visualAsked); !visual.empty())
            look.showsThrough = hasAlpha(visual.front());
        // The colour of the texts comes first: red, green and blue.
        if (const auto color = hostsAnswer(colorsAsked); color.size() == 3)
            look.symbolColor = {color[0] / brightest, color[1] / brightest, color[2] / brightest};
        return look;
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
    [[nodiscard]] xcb_connection_t* server() const { return m_server.connection(); }

    [[nodiscard]] xcb_get_property_cookie_t askHost(xcb_atom_t property, xcb_atom_t type,
                                                    std::uint32_t length) const
    {
        return xcb_get_property(server(), 0, m_host, property, type, 0, length);
    }

    /// Empty where the host does not have the property, or is gone.
    [[nodiscard]] std::vector<std::uint32_t> hostsAnswer(xcb_get_property_cookie_t cookie) const
    {
        const xcb::Owned<xcb_get_property_reply_t> reply{
            xcb_get_property_reply(server(), cookie, nullptr)};
        if (!reply || reply->format != 32)
            return {};
        const auto* const first =
            static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + reply->value_len};
    }

    [[nodiscard]] bool hasAlpha(xcb_visualid_t visual) const
    {
        constexpr std::uint8_t depthWithAlpha = 32;
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(server()));
        for (; screens.rem > 0; xcb_screen_next(&screens)) {
            auto depths = xcb_screen_allowed_depths_iterator(screens.data);
            for (; depths.rem > 0; xcb_depth_next(&depths)) {
                const std::span visuals(
                    xcb_depth_visuals(depths.data),
                    static_cast<std::size_t>(xcb_depth_visuals_length(depths.data)));
                if (depths.data->depth == depthWithAlpha &&
                    std::ranges::find(visuals, visual, &xcb_visualtype_t::visual_id) !=
                        visuals.end())
                    return true;
            }
        }
        return false;
    }

    void follow(xcb_window_t window)
    {
        const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(server(), window, XCB_CW_EVENT_MASK, &structure);
        m_server.noteRequests();
    }

    void setHost(xcb_window_t host)
    {
        m_host = host;
        if (m_host != noWindow)
            follow(m_host);
        m_receiver(m_host == noWindow ? TrayHost::none : TrayHost::xembed);
    }

    void handleLoss() override
    {
        if (m_host != noWindow)
            setHost(noWindow);
    }

    void handleEvent(const xcb_generic_event_t& event) override
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
    XServer m_server;
    xcb_atom_t m_selection = noAtom;
    xcb_atom_t m_manager = noAtom;
    xcb_atom_t m_opcode = noAtom;
    xcb_atom_t m_visual = noAtom;
    xcb_atom_t m_colors = noAtom;
    xcb_window_t m_host = noWindow;
};

X11TrayHosts::X11TrayHosts(std::string display) : m_display(std::move(display)) {}

X11TrayHosts::~X11TrayHosts() = default;

void X11TrayHosts::watch(Receiver receiver)
{
    m_watch = std::make_unique<Watch>(m_display, std::move(receiver));
    m_watch->start();
}

TrayAppearance X11TrayHosts::appearance()
{
    return m_watch ? m_watch->appearance() : TrayAppearance{};
}

void X11TrayHosts::dock(std::uint32_t window)
{
    if (m_watch)
        m_watch->dock(window);
}

std::unique_ptr<TrayHosts> makeX11TrayHosts(std::string display)
{
    return std::make_unique<X11TrayHosts>(std::move(display));
}

} // namespace clavo
