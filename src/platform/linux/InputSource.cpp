// SPDX-License-Identifier: MIT
#include "platform/linux/InputSource.h"

#include "platform/linux/Environment.h"

namespace clavo
{

bool isX11Session(const SessionEnvironment& session)
{
    if (session.type == "wayland" || !session.waylandDisplay.empty())
        return false;
    return !session.display.empty();
}

InputSource inputSource(const SessionEnvironment& session)
{
    if (session.input == "x11")
        return InputSource::x11;
    if (session.input == "evdev")
        return InputSource::evdev;
    return isX11Session(session) ? InputSource::x11 : InputSource::evdev;
}

SessionEnvironment sessionEnvironment()
{
    return {.type = environment("XDG_SESSION_TYPE"),
            .waylandDisplay = environment("WAYLAND_DISPLAY"),
            .display = environment("DISPLAY"),
            .input = environment("CLAVO_INPUT")};
}

} // namespace clavo
