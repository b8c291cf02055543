// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/KernelDevices.h"
#include "eventloop/EventLoop.h"
#include "fakes/FakeScreens.h"
#include "platform/evdev/EvdevEventTap.h"
#include "platform/evdev/EvdevKeys.h"

#include <linux/input-event-codes.h>

#include <memory>

namespace clavo
{

/// A tap on the devices of the kernel, with a keyboard and a mouse plugged in.
class EvdevTapRig
{
public:
    EventTap& tap() { return *m_tap; }

    void key(std::int64_t code, bool down)
    {
        std::uint16_t evdevCode = 1;
        while (evdev::virtualKeyCode(evdevCode) != code)
            ++evdevCode;
        keyboard->key(evdevCode, down);
    }

    void click(bool down, double x)
    {
        movePointer(x);
        mouse->key(BTN_LEFT, down);
    }

    void wheel(double x)
    {
        movePointer(x);
        mouse->send({{.type = EV_REL, .code = REL_WHEEL, .value = 1}});
    }

    /// Against the left edge of the screens, and from there to the place.
    void movePointer(double x)
    {
        mouse->send({{.type = EV_REL, .code = REL_X, .value = -100'000}});
        mouse->send({{.type = EV_REL, .code = REL_X, .value = static_cast<std::int32_t>(x)}});
    }

    void lose()
    {
        keyboard->unplug();
        mouse->unplug();
    }

    void restore()
    {
        keyboard = &devices.plugIn(keyboardKind());
        mouse = &devices.plugIn(mouseKind());
    }

    template <typename Condition> bool until(Condition condition)
    {
        return EventLoop::until(condition);
    }

    KernelDevices devices;
    KernelDevice* keyboard = &devices.plugIn(keyboardKind());
    KernelDevice* mouse = &devices.plugIn(mouseKind());

private:
    EventLoop m_loop;
    FakeScreens m_screens;
    std::unique_ptr<EventTap> m_tap = makeEvdevEventTap(m_screens);
};

} // namespace clavo
