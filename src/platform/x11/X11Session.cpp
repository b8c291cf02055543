// SPDX-License-Identifier: MIT
#include "platform/x11/X11Session.h"

#include "platform/x11/XServer.h"

namespace clavo
{

bool isXServerThere()
{
    return xcb::connect({}).connection != nullptr;
}

} // namespace clavo
