// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

/// Ownership for what xcb hands out. For the adapters' bodies only: their headers are plain C++.
namespace clavo::xcb
{

struct Free {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// A reply, an event or an error.
template <typename T> using Owned = std::unique_ptr<T, Free>;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};

using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// A connection to an X server and the root window of its default screen.
struct Desktop {
    Connection connection; // Null: the server cannot be reached.
    xcb_window_t root = XCB_WINDOW_NONE;
    int screen = 0; // The number of the default screen.
};

/// Connects to the display, the session's own one if it is empty.
[[nodiscard]] Desktop connect(const std::string& display);

} // namespace clavo::xcb
