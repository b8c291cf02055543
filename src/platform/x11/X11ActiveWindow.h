// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

namespace clavo
{

/// Watches which window is active, as the window manager reports it, as long as this exists.
class X11ActiveWindow
{
public:
    virtual ~X11ActiveWindow() = default;
};

/// Calls the receiver with the process of the active window, now and whenever another window
/// becomes active; with 0 if the process is unknown. Watches the display, the session's own one if
/// it is empty, and waits for the X server here only. Thread: main, which runs a Qt event loop.
[[nodiscard]] std::unique_ptr<X11ActiveWindow>
makeX11ActiveWindow(std::function<void(pid_t)> receiver, std::string display = {});

} // namespace clavo
