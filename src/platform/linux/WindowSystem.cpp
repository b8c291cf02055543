// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/Environment.h"
#include "platform/x11/XServer.h"

#include <cstdlib>

namespace clavo
{

// Qt would end the process if it could not reach the display.
void prepareForWindows()
{
    const auto hasWayland = !environment("WAYLAND_DISPLAY").empty();
    if (!hasWayland && !isXServerThere())
        setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite=*/0);
}

} // namespace clavo
