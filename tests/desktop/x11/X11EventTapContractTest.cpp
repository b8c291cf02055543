// SPDX-License-Identifier: MIT
#include "contracts/EventTapContract.h"

#include "desktop/user/Hands.h"
#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"
#include "platform/evdev/EvdevKeys.h"
#include "platform/x11/X11EventTap.h"

#include <memory>

namespace clavo
{
namespace
{

/// A tap on a private X server, with the keyboard and the mouse of XTEST.
class X11TapRig
{
public:
    EventTap& tap() { return *m_tap; }

    void key(std::int64_t code, bool down)
    {
        std::uint32_t evdevCode = 1;
        while (evdev::virtualKeyCode(evdevCode) != code)
            ++evdevCode;
        down ? m_hands->press(evdevCode) : m_hands->release(evdevCode);
    }

    void click(bool down, double x)
    {
        movePointer(x);
        down ? m_hands->pressButton(1) : m_hands->releaseButton(1);
    }

    void wheel(double x)
    {
        movePointer(x);
        m_hands->click(4);
    }

    void movePointer(double x) { m_hands->movePointer(static_cast<int>(x)); }

    void lose() { m_server.stop(); }

    void restore()
    {
        m_server.start();
        m_hands = std::make_unique<Hands>(m_server.display());
    }

    template <typename Condition> bool until(Condition condition)
    {
        return EventLoop::until(condition);
    }

private:
    EventLoop m_loop;
    PrivateServer m_server;
    std::unique_ptr<Hands> m_hands = std::make_unique<Hands>(m_server.display());
    std::unique_ptr<EventTap> m_tap = makeX11EventTap(m_server.display());
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventTapContract, X11TapRig);

} // namespace
} // namespace clavo
