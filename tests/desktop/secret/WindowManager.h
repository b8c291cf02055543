// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>

namespace clavo
{

/// Does for the windows of the test's desktop what a window manager does: gives one of them the
/// keys.
class WindowManager
{
public:
    WindowManager();
    ~WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    /// Gives the keys and the pointer to the window of this process; false while it has none that
    /// is seen.
    [[nodiscard]] bool activate(std::uint32_t process);

private:
    [[nodiscard]] xcb_atom_t atom(std::string_view name);
    [[nodiscard]] bool isOf(xcb_window_t window, std::uint32_t process);
    [[nodiscard]] bool isSeen(xcb_window_t window);

    xcb_connection_t* m_server;
    xcb_window_t m_root;
    xcb_atom_t m_activeWindow;
    xcb_atom_t m_process;
};

} // namespace clavo
