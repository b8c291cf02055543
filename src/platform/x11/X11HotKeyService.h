// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <memory>
#include <string>

namespace clavo
{

/// The shortcuts of an X11 session: keys grabbed on every root window, once for each state of Caps
/// Lock, Num Lock and Scroll Lock. The command key is Super. Grabs on the display, on the session's
/// own one if it is empty, and connects to it with the first registration.
///
/// A key that another client has grabbed stays with that client. All grabs are repeated when the
/// keyboard's map changes, which may change the modifiers of Super and of the locks. A lost or
/// missing server is connected to once it is available. Supports Command and Shift and refuses
/// other modifiers. Thread: main, which runs a Qt event loop; ordinary keys do not wake it.
[[nodiscard]] std::unique_ptr<HotKeyService> makeX11HotKeyService(std::string display = {});

} // namespace clavo
