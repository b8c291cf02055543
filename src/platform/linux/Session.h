// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// The variables of the environment that describe the session; empty if not set.
struct SessionEnvironment {
    std::string_view type = {};           // XDG_SESSION_TYPE
    std::string_view waylandDisplay = {}; // WAYLAND_DISPLAY
    std::string_view display = {};        // DISPLAY; empty if built without X11.
    std::string_view input = {};          // CLAVO_INPUT
};

/// A Wayland session is never x11, although it has an X server: that server reports only on its own
/// windows. It is wayland if its display is known, otherwise none.
enum class WindowSystem { none, x11, wayland };

enum class InputSource { x11, evdev };

/// What the choice of adapters depends on.
struct Session {
    WindowSystem windows = WindowSystem::none;
    InputSource input = InputSource::evdev;

    [[nodiscard]] bool isX11() const { return windows == WindowSystem::x11; }
};

/// The session that the variables describe. CLAVO_INPUT ("x11" or "evdev") overrides the input
/// source of the window system.
[[nodiscard]] Session sessionOf(const SessionEnvironment& variables);

/// The session of this process, decided by the first call.
[[nodiscard]] const Session& session();

} // namespace clavo
