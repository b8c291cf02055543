// SPDX-License-Identifier: MIT
#include "platform/posix/Environment.h"
#include "platform/x11/X11ActiveWindow.h"
#include "platform/x11/X11EventTap.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Session.h"
#include "platform/x11/X11TrayHosts.h"

namespace clavo
{

std::unique_ptr<X11ActiveWindow> makeX11ActiveWindow(std::function<void(pid_t)>, std::string)
{
    return nullptr;
}

std::unique_ptr<EventTap> makeX11EventTap(std::string)
{
    return nullptr;
}

std::unique_ptr<HotKeyService> makeX11HotKeyService(std::string)
{
    return nullptr;
}

std::unique_ptr<Screens> makeX11Screens(std::string)
{
    return nullptr;
}

std::unique_ptr<TrayHosts> makeX11TrayHosts(std::string)
{
    return nullptr;
}

bool isX11Supported()
{
    return false;
}

// Only Qt can ask the server.
bool isXServerThere()
{
    return !environment("DISPLAY").empty();
}

} // namespace clavo
