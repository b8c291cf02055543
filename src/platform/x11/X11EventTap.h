// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <memory>
#include <string>

namespace clavo
{

/// The tap of an X11 session: XInput2 raw events of every keyboard and pointer, regardless of the
/// focus and of grabs. Listens to the display; to the session's own one if it is empty.
///
/// create() is also refused if the server lacks XInput 2.1. Nothing waits for the X server after
/// it: a key is delivered at once, a click when the server has reported the pointer's position.
/// Modifiers that are held when the server is lost are released. Thread: main, which runs a Qt
/// event loop.
[[nodiscard]] std::unique_ptr<EventTap> makeX11EventTap(std::string display = {});

} // namespace clavo
