// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

namespace clavo
{

/// The window that the window manager gives the keys to, by the process it belongs to.
///
/// Thread: main. The receiver is called there whenever another window is active, with 0 where
/// nothing tells whose it is. The X server is never waited for after the construction.
class X11ActiveWindow
{
public:
    using Receiver = std::function<void(pid_t)>;

    /// Watches the display; the session's own one if it is empty.
    explicit X11ActiveWindow(Receiver receiver, const std::string& display = {});
    ~X11ActiveWindow();
    X11ActiveWindow(const X11ActiveWindow&) = delete;
    X11ActiveWindow& operator=(const X11ActiveWindow&) = delete;

private:
    class Watch;

    std::unique_ptr<Watch> m_watch;
};

} // namespace clavo
