// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XServer.h"

#include <QColor>
#include <QPoint>

#include <optional>
#include <string_view>

namespace clavo
{

/// An XEmbed host of 16 by 16 pixels whose windows may be transparent, and which announces the
/// colour of its symbols if it has one. It embeds the first window that asks.
class TranslucentTray
{
public:
    explicit TranslucentTray(std::optional<QColor> symbols = {});

    /// The colour of the embedded window at the point; nothing while there is no such window.
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
