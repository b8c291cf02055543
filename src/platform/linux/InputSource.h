// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// What tells of the session, as the environment has it; empty where it is not set.
struct SessionEnvironment {
    std::string_view type = {};           // XDG_SESSION_TYPE
    std::string_view waylandDisplay = {}; // WAYLAND_DISPLAY
    std::string_view display = {};        // DISPLAY
    std::string_view input = {};          // CLAVO_INPUT
};

enum class InputSource { x11, evdev };

/// Under Wayland an X server is there too, but it tells only of the windows that live on it.
[[nodiscard]] bool isX11Session(const SessionEnvironment& session);

/// Where the input comes from: CLAVO_INPUT ("x11" or "evdev") says so, else the kind of session.
[[nodiscard]] InputSource inputSource(const SessionEnvironment& session);

/// This process's.
[[nodiscard]] SessionEnvironment sessionEnvironment();

} // namespace clavo
