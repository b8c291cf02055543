// SPDX-License-Identifier: MIT
#include "platform/x11/X11ActiveWindow.h"

#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"

#include <gmock/gmock.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;

/// A window manager with windows of its own.
class Windows
{
public:
    explicit Windows(const std::string& display)
        : m_server(xcb_connect(display.c_str(), nullptr)),
          m_root(xcb_setup_roots_iterator(xcb_get_setup(m_server)).data->root)
    {
    }
    ~Windows() { xcb_disconnect(m_server); }
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;

    [[nodiscard]] xcb_window_t open()
    {
        const auto window = xcb_generate_id(m_server);
        xcb_create_window(m_server, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }
    [[nodiscard]] xcb_window_t openOf(std::uint32_t process)
    {
        const auto window = open();
        set(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, process);
        return window;
    }
    void close(xcb_window_t window) { xcb_destroy_window(m_server, window); }
    void activate(xcb_window_t window)
    {
        set(m_root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, window);
        sync();
    }

private:
    void set(xcb_window_t window, std::string_view name, xcb_atom_t type, std::uint32_t value)
    {
        auto* const atom = xcb_intern_atom_reply(
            m_server,
            xcb_intern_atom(m_server, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        xcb_change_property(m_server, XCB_PROP_MODE_REPLACE, window, atom->atom, type, 32, 1,
                            &value);
        std::free(atom);
    }
    void sync()
    {
        std::free(xcb_get_input_focus_reply(m_server, xcb_get_input_focus(m_server), nullptr));
    }

    xcb_connection_t* m_server;
    xcb_window_t m_root;
};

class X11ActiveWindowTest : public testing::Test
{
protected:
    [[nodiscard]] bool told(std::size_t count)
    {
        return EventLoop::until([&] { return processes.size() == count; });
    }
    std::function<void(pid_t)> receiver()
    {
        return [this](pid_t process) { processes.push_back(process); };
    }

    EventLoop loop;
    PrivateServer server;
    std::vector<pid_t> processes;
};

TEST_F(X11ActiveWindowTest, ReportsTheProcessOfTheActiveWindowAndThenOfTheNext)
{
    Windows windows(server.display());
    windows.activate(windows.openOf(1234));
    const auto window = makeX11ActiveWindow(receiver(), server.display());
    ASSERT_TRUE(told(1));

    windows.activate(windows.openOf(77));

    ASSERT_TRUE(told(2));
    EXPECT_THAT(processes, ElementsAre(1234, 77));
}

TEST_F(X11ActiveWindowTest, ReportsNoProcessForAWindowOfUnknownOwner)
{
    Windows windows(server.display());
    const auto window = makeX11ActiveWindow(receiver(), server.display());
    ASSERT_TRUE(told(1)) << "no window is active";

    windows.activate(windows.open());
    ASSERT_TRUE(told(2));
    windows.activate(windows.openOf(5));
    ASSERT_TRUE(told(3));
    windows.activate(XCB_WINDOW_NONE);
    ASSERT_TRUE(told(4));
    EXPECT_THAT(processes, ElementsAre(0, 0, 5, 0));
}

TEST_F(X11ActiveWindowTest, SurvivesAWindowThatIsGoneAgain)
{
    Windows windows(server.display());
    const auto window = makeX11ActiveWindow(receiver(), server.display());
    ASSERT_TRUE(told(1));

    const auto shortLived = windows.openOf(9);
    windows.close(shortLived);
    windows.activate(shortLived);

    ASSERT_TRUE(told(2));
    EXPECT_THAT(processes, ElementsAre(0, 0));
}

TEST_F(X11ActiveWindowTest, WithoutAServerItReportsNothing)
{
    const auto window = makeX11ActiveWindow(receiver(), ":7777");
    QCoreApplication::processEvents();

    EXPECT_THAT(processes, ElementsAre());
}

} // namespace
} // namespace clavo
