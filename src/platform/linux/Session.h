// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// The variables of the environment that describe the session; empty if not set.
struct SessionEnvironment {
    std::string_view type = {};           // XDG_SESSION_TYPE
    std::string_view waylandDisplay = {}; // WAYLAND_DISPLAY
    std::string_view display = {};        // DISPLAY
    std::string_view input = {};          // CLAVO_INPUT
};

/// A Wayland session is never x11, although it has an X server: that server reports only on its own
/// windows. It is wayland if its display is known, otherwise none.
enum class WindowSystem { none, x11, wayland };

/// none: the program is built without the source that the session needs.
enum class InputSource { none, x11, evdev };

/// The sources of input that the program is built with.
struct Sources {
    bool x11 = true;
    bool evdev = true;
};

/// The properties of the session on which the choice of adapters depends.
struct Session {
    WindowSystem windows = WindowSystem::none;
    InputSource input = InputSource::evdev;

    [[nodiscard]] bool isX11() const { return windows == WindowSystem::x11; }
};

/// The session that the variables describe; without X11 it is never x11. CLAVO_INPUT ("x11" or
/// "evdev") overrides the input source of the window system unless the program is built without it.
[[nodiscard]] Session sessionOf(const SessionEnvironment& variables, Sources sources = {});

/// The session of this process, decided by the first call.
[[nodiscard]] const Session& session();

} // namespace clavo
