// SPDX-License-Identifier: MIT
#include "platform/linux/Session.h"

#include "platform/posix/Environment.h"
#include "platform/x11/X11Session.h"

namespace clavo
{
namespace
{

WindowSystem windowSystem(const SessionEnvironment& variables)
{
    if (!variables.waylandDisplay.empty())
        return WindowSystem::wayland;
    if (variables.type == "wayland" || variables.display.empty())
        return WindowSystem::none;
    return WindowSystem::x11;
}

InputSource inputSource(std::string_view wanted, WindowSystem windows)
{
    if (wanted == "x11")
        return InputSource::x11;
    if (wanted == "evdev")
        return InputSource::evdev;
    return windows == WindowSystem::x11 ? InputSource::x11 : InputSource::evdev;
}

} // namespace

Session sessionOf(const SessionEnvironment& variables)
{
    const auto windows = windowSystem(variables);
    return {.windows = windows, .input = inputSource(variables.input, windows)};
}

const Session& session()
{
    static const auto decided =
        sessionOf({.type = environment("XDG_SESSION_TYPE"),
                   .waylandDisplay = environment("WAYLAND_DISPLAY"),
                   .display = isX11Supported() ? environment("DISPLAY") : "",
                   .input = environment("CLAVO_INPUT")});
    return decided;
}

} // namespace clavo
