// SPDX-License-Identifier: MIT
#pragma once

#include "input/Screens.h"

#include <memory>
#include <string>

namespace clavo
{

/// The monitors of an X11 session in native pixels, as RandR reports them; without RandR the
/// desktop as one screen. Watches the display; the session's own one if it is empty.
///
/// Changes that the server has reported are read when the extents are asked for: a change wakes
/// nothing, and asking costs a round trip only after a change. There are no screens while the
/// server is lost. Thread: main.
[[nodiscard]] std::unique_ptr<Screens> makeX11Screens(std::string display = {});

} // namespace clavo
