// SPDX-License-Identifier: MIT
#include "platform/x11/X11TrayHosts.h"

#include "platform/x11/XServer.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

constexpr xcb_window_t noWindow = XCB_WINDOW_NONE;
constexpr std::uint32_t requestDock = 0; // Of the opcodes of the system-tray protocol.

class X11TrayHosts final : public TrayHosts, private XServer::Client
{
public:
    explicit X11TrayHosts(std::string display) : m_server(*this, std::move(display)) {}

    void watch(Receiver receiver) override
    {
        m_receiver = std::move(receiver);
        if (!m_server.connect())
            return m_receiver(TrayHost::none);

        const auto atoms =
            xcb::atoms(server(), {"_NET_SYSTEM_TRAY_S" + std::to_string(m_server.desktop().screen),
                                  "MANAGER", "_NET_SYSTEM_TRAY_OPCODE", "_NET_SYSTEM_TRAY_VISUAL",
                                  "_NET_SYSTEM_TRAY_COLORS"});
        m_selection = atoms[0];
        m_manager = atoms[1];
        m_opcode = atoms[2];
        m_visual = atoms[3];
        m_colors = atoms[4];

        // A new host announces itself to the root window. It is watched before the present host is
        // asked for.
        watchWindow(m_server.desktop().root);
        const xcb::Owned<xcb_get_selection_owner_reply_t> owner{xcb_get_selection_owner_reply(
            server(), xcb_get_selection_owner(server(), m_selection), nullptr)};
        setHost(owner ? owner->owner : noWindow);
    }

    [[nodiscard]] TrayAppearance appearance() override
    {
        if (m_host == noWindow)
            return {};
        constexpr double brightest = 0xffff;
        m_server.drainSoon(); // Events may be read along with the replies.
        const auto visualRequest = askHost(m_visual, XCB_ATOM_VISUALID, 1);
        const auto colorsRequest = askHost(m_colors, XCB_ATOM_CARDINAL, 3);
        TrayAppearance look;
        if (const auto visual = takeReply(visualRequest); !visual.empty())
            look.showsThrough = hasAlpha(visual.front());
        // The colour of the texts comes first: red, green and blue.
        if (const auto color = takeReply(colorsRequest); color.size() == 3)
            look.symbolColor = {color[0] / brightest, color[1] / brightest, color[2] / brightest};
        return look;
    }

    /// Sends on the application's own connection, which has created the window.
    void dock(std::uint32_t window) override
    {
        if (m_host == noWindow)
            return;
        const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        if (!application)
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

    /// Empty if the host does not have the property or is gone.
    [[nodiscard]] std::vector<std::uint32_t> takeReply(xcb_get_property_cookie_t cookie) const
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

    void watchWindow(xcb_window_t window)
    {
        xcb::selectEvents(server(), window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        m_server.noteRequests();
    }

    void setHost(xcb_window_t host)
    {
        m_host = host;
        if (m_host != noWindow)
            watchWindow(m_host);
        m_receiver(m_host == noWindow ? TrayHost::none : TrayHost::xembed);
    }

    void handleLoss() override
    {
        if (m_host != noWindow)
            setHost(noWindow);
    }

    void handleEvent(const xcb_generic_event_t& event) override
    {
        switch (xcb::typeOf(event)) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.type == m_manager && message.data.data32[1] == m_selection)
                setHost(message.data.data32[2]);
            break;
        }
        case XCB_DESTROY_NOTIFY:
            handleEndOf(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
            break;
        case 0: // The error of a request to a window that is gone.
            handleEndOf(reinterpret_cast<const xcb_value_error_t&>(event).bad_value);
            break;
        default:
            break;
        }
    }

    void handleEndOf(xcb_window_t window)
    {
        if (window == m_host && m_host != noWindow)
            setHost(noWindow);
    }

    Receiver m_receiver;
    XServer m_server;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_atom_t m_opcode = XCB_ATOM_NONE;
    xcb_atom_t m_visual = XCB_ATOM_NONE;
    xcb_atom_t m_colors = XCB_ATOM_NONE;
    xcb_window_t m_host = noWindow;
};

} // namespace

std::unique_ptr<TrayHosts> makeX11TrayHosts(std::string display)
{
    return std::make_unique<X11TrayHosts>(std::move(display));
}

} // namespace clavo
