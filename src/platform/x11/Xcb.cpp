// SPDX-License-Identifier: MIT
#include "platform/x11/Xcb.h"

#include <utility>

namespace clavo::xcb
{

Desktop connect(const std::string& display)
{
    int screen = 0;
    Connection connection{xcb_connect(display.empty() ? nullptr : display.c_str(), &screen)};
    if (xcb_connection_has_error(connection.get()) != 0)
        return {};
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (int i = 0; i < screen && roots.rem > 1; ++i)
        xcb_screen_next(&roots);
    return {.connection = std::move(connection), .root = roots.data->root, .screen = screen};
}

} // namespace clavo::xcb
