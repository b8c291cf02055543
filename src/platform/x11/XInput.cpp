// SPDX-License-Identifier: MIT
#include "platform/x11/XInput.h"

#include <utility>

namespace clavo::xcb
{

std::optional<XInput> connectXInput(const std::string& display)
{
    constexpr std::pair<std::uint16_t, std::uint16_t> needed{2, 1};

    auto desktop = connect(display);
    auto* server = desktop.connection.get();
    if (!server)
        return std::nullopt;
    const auto* extension = xcb_get_extension_data(server, &xcb_input_id);
    if (!extension || extension->present == 0)
        return std::nullopt;
    const Owned<xcb_input_xi_query_version_reply_t> version{xcb_input_xi_query_version_reply(
        server, xcb_input_xi_query_version(server, needed.first, needed.second), nullptr)};
    if (!version || std::pair(version->major_version, version->minor_version) < needed)
        return std::nullopt;
    return XInput{.desktop = std::move(desktop), .extension = extension->major_opcode};
}

xcb_void_cookie_t select(const Desktop& desktop, xcb_input_device_id_t devices,
                         std::uint32_t events)
{
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } const request{.head = {.deviceid = devices, .mask_len = 1}, .events = events};
    return xcb_input_xi_select_events_checked(desktop.connection.get(), desktop.root, 1,
                                              &request.head);
}

} // namespace clavo::xcb
