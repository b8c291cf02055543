// SPDX-License-Identifier: MIT
#include "platform/x11/XServer.h"

#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"

#include <gtest/gtest.h>

#include <utility>

namespace clavo
{
namespace
{

/// Hears changes of the root window's name. While it looks for replies in its first drain the name
/// changes, and it makes a request.
class Listener : public XServer::Client
{
public:
    explicit Listener(std::string display) : m_display(display), m_server(*this, std::move(display))
    {
    }

    [[nodiscard]] bool connect() { return m_server.connect(); }
    [[nodiscard]] int changes() const { return m_changes; }

private:
    [[nodiscard]] bool prepareConnection() override
    {
        const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_server.connection(), m_server.desktop().root,
                                     XCB_CW_EVENT_MASK, &properties);
        waitFor(m_server.desktop());
        return true;
    }

    void handleEvent(const xcb_generic_event_t& event) override
    {
        if (event.response_type == XCB_PROPERTY_NOTIFY)
            ++m_changes;
    }

    void takeReplies() override
    {
        if (std::exchange(m_hasRequested, true))
            return;
        const auto other = xcb::connect(m_display);
        xcb_change_property(other.connection.get(), XCB_PROP_MODE_REPLACE, other.root,
                            XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 4, "name");
        waitFor(other);
        xcb_no_operation(m_server.connection());
        m_server.noteRequests();
    }

    static void waitFor(const xcb::Desktop& desktop)
    {
        auto* const server = desktop.connection.get();
        const xcb::Owned<xcb_get_input_focus_reply_t> done{
            xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr)};
    }

    std::string m_display;
    XServer m_server;
    bool m_hasRequested = false;
    int m_changes = 0;
};

TEST(XServer, AnEventThatIsReadWhenRequestsAreSentIsHandledAtOnce)
{
    EventLoop loop;
    const PrivateServer server;
    Listener listener(server.display());
    ASSERT_TRUE(listener.connect());

    EXPECT_TRUE(EventLoop::until([&] { return listener.changes() == 1; }));
}

} // namespace
} // namespace clavo
