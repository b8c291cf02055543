// SPDX-License-Identifier: MIT
#include "platform/x11/XInput.h"

#include "platform/x11/XServer.h"

#include <xcb/xinput.h>

#include <utility>

namespace clavo
{

std::optional<std::uint8_t> announceXInput(xcb_connection_t* server)
{
    constexpr std::pair<std::uint16_t, std::uint16_t> needed{2, 1};

    const auto* extension = xcb_get_extension_data(server, &xcb_input_id);
    if (!extension || extension->present == 0)
        return std::nullopt;
    const xcb::Owned<xcb_input_xi_query_version_reply_t> version{xcb_input_xi_query_version_reply(
        server, xcb_input_xi_query_version(server, needed.first, needed.second), nullptr)};
    if (!version || std::pair(version->major_version, version->minor_version) < needed)
        return std::nullopt;
    return extension->major_opcode;
}

} // namespace clavo
