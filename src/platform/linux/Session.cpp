// SPDX-License-Identifier: MIT
#include "platform/linux/Session.h"

#include "platform/linux/Technologies.h"
#include "platform/posix/Environment.h"

namespace clavo
{
namespace
{

WindowSystem windowSystem(const SessionEnvironment& variables, Sources sources)
{
    if (!variables.waylandDisplay.empty())
        return WindowSystem::wayland;
    if (variables.type == "wayland" || variables.display.empty() || !sources.x11)
        return WindowSystem::none;
    return WindowSystem::x11;
}

InputSource inputSource(std::string_view preference, WindowSystem windows, Sources sources)
{
    const auto kernel = sources.evdev ? InputSource::evdev : InputSource::none;
    if (preference == "x11" && sources.x11)
        return InputSource::x11;
    if (preference == "evdev" && sources.evdev)
        return kernel;
    return windows == WindowSystem::x11 ? InputSource::x11 : kernel;
}

} // namespace

Session sessionOf(const SessionEnvironment& variables, Sources sources)
{
    const auto windows = windowSystem(variables, sources);
    return {.windows = windows, .input = inputSource(variables.input, windows, sources)};
}

const Session& session()
{
    static const auto decided = sessionOf({.type = environment("XDG_SESSION_TYPE"),
                                           .waylandDisplay = environment("WAYLAND_DISPLAY"),
                                           .display = environment("DISPLAY"),
                                           .input = environment("CLAVO_INPUT")},
                                          {.x11 = built::x11, .evdev = built::evdev});
    return decided;
}

} // namespace clavo
