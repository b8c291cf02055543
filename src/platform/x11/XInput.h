// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace clavo
{

/// Announces XInput 2.1 and returns the extension's number, which marks its events; nothing if the
/// server lacks it. With an older version the events of grabbed keyboards and pointers would go to
/// the grabbing client alone.
[[nodiscard]] std::optional<std::uint8_t> announceXInput(xcb_connection_t* server);

} // namespace clavo
