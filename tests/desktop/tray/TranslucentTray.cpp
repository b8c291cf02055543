// SPDX-License-Identifier: MIT
#include "desktop/tray/TranslucentTray.h"

#include <array>
#include <cstdint>

namespace clavo
{
namespace
{

using xcb::Owned;

constexpr std::uint16_t side = 16;
constexpr std::uint8_t depthWithAlpha = 32;
constexpr std::uint8_t sentBySomebody = 0x80;

} // namespace

TranslucentTray::TranslucentTray(std::optional<QColor> symbols)
{
    const auto visual = visualWithAlpha();
    show(visual);
    xcb_change_property(server(), XCB_PROP_MODE_REPLACE, m_tray, atom("_NET_SYSTEM_TRAY_VISUAL"),
                        XCB_ATOM_VISUALID, 32, 1, &visual);
    if (symbols) {
        const auto channel = [](int value) { return static_cast<std::uint32_t>(value) * 0x101; };
        // The colours of texts, errors, warnings and successes.
        std::array<std::uint32_t, 12> colors{};
        colors[0] = channel(symbols->red());
        colors[1] = channel(symbols->green());
        colors[2] = channel(symbols->blue());
        xcb_change_property(server(), XCB_PROP_MODE_REPLACE, m_tray,
                            atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL, 32, colors.size(),
                            colors.data());
    }
    xcb_set_selection_owner(server(), m_tray, atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    xcb_flush(server());
}

std::optional<QColor> TranslucentTray::pixel(QPoint point)
{
    takeIn();
    if (m_icon == XCB_WINDOW_NONE)
        return {};
    const Owned<xcb_get_image_reply_t> image{
        xcb_get_image_reply(server(),
                            xcb_get_image(server(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_icon,
                                          static_cast<std::int16_t>(point.x()),
                                          static_cast<std::int16_t>(point.y()), 1, 1, ~0U),
                            nullptr)};
    if (!image || image->depth != depthWithAlpha || xcb_get_image_data_length(image.get()) < 4)
        return {};
    const auto* const bytes = xcb_get_image_data(image.get()); // Little endian.
    return QColor(bytes[2], bytes[1], bytes[0], bytes[3]);
}

xcb_atom_t TranslucentTray::atom(std::string_view name) const
{
    const Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
        server(),
        xcb_intern_atom(server(), false, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_visualid_t TranslucentTray::visualWithAlpha() const
{
    const auto screens = xcb_setup_roots_iterator(xcb_get_setup(server()));
    auto depths = xcb_screen_allowed_depths_iterator(screens.data);
    while (depths.rem > 1 && depths.data->depth != depthWithAlpha)
        xcb_depth_next(&depths);
    return xcb_depth_visuals(depths.data)->visual_id;
}

void TranslucentTray::show(xcb_visualid_t visual)
{
    const auto colormap = xcb_generate_id(server());
    xcb_create_colormap(server(), XCB_COLORMAP_ALLOC_NONE, colormap, m_desktop.root, visual);
    m_tray = xcb_generate_id(server());
    const std::array<std::uint32_t, 4> values = {0, 0, 1, colormap};
    xcb_create_window(server(), depthWithAlpha, m_tray, m_desktop.root, 0, 0, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_COLORMAP,
                      values.data());
    xcb_map_window(server(), m_tray);
}

void TranslucentTray::takeIn()
{
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())}) {
        if ((event->response_type & ~sentBySomebody) != XCB_CLIENT_MESSAGE)
            continue;
        // To dock a window is the only request.
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        m_icon = message.data.data32[2];
        xcb_reparent_window(server(), m_icon, m_tray, 0, 0);
        xcb_map_window(server(), m_icon);
        xcb_flush(server());
    }
}

} // namespace clavo
