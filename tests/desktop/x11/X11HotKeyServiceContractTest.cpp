// SPDX-License-Identifier: MIT
#include "contracts/HotKeyServiceContract.h"

#include "desktop/user/Hands.h"
#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"
#include "platform/x11/X11HotKeyService.h"

#include <linux/input-event-codes.h>

#include <memory>

namespace clavo
{
namespace
{

/// A service on a private X server, with the keyboard of XTEST.
class X11HotKeyRig
{
public:
    HotKeyService& service() { return *m_service; }

    void strike(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        const bool isShift = (modifiers & HotKeyModifier::shiftKey) != 0;
        const bool isSuper = (modifiers & HotKeyModifier::cmdKey) != 0;
        if (isShift)
            m_hands.press(KEY_LEFTSHIFT);
        if (isSuper)
            m_hands.press(KEY_LEFTMETA);
        m_hands.strike(keyCode == 40 ? KEY_K : KEY_J);
        if (isSuper)
            m_hands.release(KEY_LEFTMETA);
        if (isShift)
            m_hands.release(KEY_LEFTSHIFT);
    }

    template <typename Condition> bool until(Condition condition)
    {
        return EventLoop::until(condition);
    }

private:
    EventLoop m_loop;
    PrivateServer m_server;
    Hands m_hands{m_server.display()};
    std::unique_ptr<HotKeyService> m_service = makeX11HotKeyService(m_server.display());
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, HotKeyServiceContract, X11HotKeyRig);

} // namespace
} // namespace clavo
