// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/ProgramFixture.h"
#include "desktop/user/ProgramWindows.h"

#include <initializer_list>

namespace clavo
{

/// The windows of the real program and a user.
class WindowFixture : public ProgramFixture
{
protected:
    static constexpr std::uint32_t keyEscape = 1;
    static constexpr std::uint32_t keyTab = 15;
    static constexpr std::uint32_t keyReturn = 28;
    static constexpr std::uint32_t keyControl = 29;
    static constexpr std::uint32_t keyComma = 51;
    static constexpr std::uint32_t keySpace = 57;
    static constexpr std::uint32_t keyRight = 106;
    static constexpr std::uint32_t keyDown = 108;

    static constexpr int panelWidth = 330;
    static constexpr int settingsWidth = 460;

    /// True once the open window has this width and the keyboard focus.
    static bool opens(int width)
    {
        return EventLoop::until([=] {
            const auto window = openWindow("clavo");
            return window && window->width() == width && hasFocus("clavo");
        });
    }
    static bool closes()
    {
        return EventLoop::until([] { return !openWindow("clavo"); });
    }

    void click(QPoint point)
    {
        hands.movePointer(point.x(), point.y());
        hands.click(1);
    }
    void strike(std::initializer_list<std::uint32_t> keys)
    {
        for (const auto key : keys)
            hands.strike(key);
    }
    void strikeWithControl(std::uint32_t key)
    {
        hands.press(keyControl);
        hands.strike(key);
        hands.release(keyControl);
    }
};

} // namespace clavo
