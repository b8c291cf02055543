// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/Xcb.h"

#include <xcb/xinput.h>

#include <cstdint>
#include <optional>
#include <string>

namespace clavo::xcb
{

/// A connection that has announced XInput 2.1. With an older version the events of grabbed
/// keyboards and pointers would go to the grabbing client alone.
struct XInput {
    Desktop desktop;
    std::uint8_t extension = 0; // Its number on this server, which marks its events.
};

/// Connects to the display; nothing if it cannot be reached or knows no XInput 2.1.
[[nodiscard]] std::optional<XInput> connectXInput(const std::string& display);

/// Replaces the events (XCB_INPUT_XI_EVENT_MASK_…) that the devices send us; sent with the next
/// flush, an error is reported to xcb_request_check().
///
/// They are selected on one root window: a raw event goes to those of all screens, and would come
/// once for each.
xcb_void_cookie_t select(const Desktop& desktop, xcb_input_device_id_t devices,
                         std::uint32_t events);

} // namespace clavo::xcb
