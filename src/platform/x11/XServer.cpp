// SPDX-License-Identifier: MIT
#include "platform/x11/XServer.h"

#include "platform/x11/Xcb.h"

namespace clavo
{

bool isXServerThere()
{
    return xcb::connect({}).connection != nullptr;
}

} // namespace clavo
