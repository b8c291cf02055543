// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XServer.h"

#include <QColor>
#include <QPoint>

#include <optional>
#include <string_view>

namespace clavo
{

/// An XEmbed host of 16 by 16 pixels whose windows may be transparent, and which tells the colour
/// of the symbols in it if it is given one. It takes in the first window that asks.
class TranslucentTray
{
public:
    explicit TranslucentTray(std::optional<QColor> symbols = {});

    /// What the window that was taken in shows there; nothing if there is none yet.
    [[nodiscard]] std::optional<QColor> pixel(QPoint point);

private:
    [[nodiscard]] xcb_connection_t* server() const { return m_desktop.connection.get(); }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;
    /// Of the screen, for windows with an alpha channel.
    [[nodiscard]] xcb_visualid_t visualWithAlpha() const;
    void show(xcb_visualid_t visual);
    void takeIn();

    xcb::Desktop m_desktop = xcb::connect({});
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    xcb_window_t m_icon = XCB_WINDOW_NONE;
};

} // namespace clavo
