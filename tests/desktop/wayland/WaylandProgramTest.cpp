// SPDX-License-Identifier: MIT
#include "desktop/user/KernelDevices.h"
#include "desktop/user/ProgramUser.h"
#include "desktop/wayland/Compositor.h"

#include <QDir>
#include <QLocalServer>

#include <linux/input-event-codes.h>
#include <unistd.h>

#include <optional>

namespace clavo
{
namespace
{

constexpr int panelWidth = 330;
constexpr int settingsWidth = 460;

/// The real program in a Wayland session. Such a session has an X server too, for programs that
/// know only X11; this one accepts no client.
class WaylandProgram : public ProgramUser
{
protected:
    WaylandProgram()
    {
        const auto display = 100 + ::getpid();
        m_xServer.setSocketOptions(QLocalServer::AbstractNamespaceOption);
        EXPECT_TRUE(m_xServer.listen(QStringLiteral("/tmp/.X11-unix/X%1").arg(display)));
        qputenv("DISPLAY", ":" + QByteArray::number(display));
    }
    ~WaylandProgram() override
    {
        EXPECT_FALSE(m_xServer.hasPendingConnections()) << "it has asked for X11";
        qunsetenv("DISPLAY");
    }

    static std::optional<CompositorWindow> openWindow()
    {
        const auto windows = Compositor::windows();
        EXPECT_LE(windows.size(), 1U);
        return windows.empty() ? std::nullopt : std::optional(windows.front());
    }

    /// True once the one open window has this width and the keyboard focus.
    static bool opens(int width)
    {
        return EventLoop::until([=] {
            const auto window = openWindow();
            return window && window->place.width() == width && window->hasFocus;
        });
    }
    static bool closes()
    {
        return EventLoop::until([] { return !openWindow(); });
    }

    /// The part of the screen that differs from the empty desktop; keeps its picture for people.
    static QRect seen(const char* name)
    {
        const auto picture = Compositor::picture();
        const auto desktop = picture.pixel(0, 0);
        QRect seen;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) != desktop)
                    seen |= QRect(x, y, 1, 1);
            }
        }
        QDir().mkpath(CLAVO_PICTURES);
        picture.copy(seen).save(QStringLiteral(CLAVO_PICTURES "/%1.png").arg(name));
        return seen;
    }
    /// True once all of the open window is on the screen, and nothing else.
    static bool isDrawn(const char* name)
    {
        return EventLoop::until([=] {
            const auto window = openWindow();
            return window && seen(name) == window->place;
        });
    }

    /// True once the window shows that a key has reached it. The compositor knows of the focus
    /// before the program does, which never learns of a focus that is lost again by then.
    static bool takesKeys()
    {
        const auto before = Compositor::picture();
        Compositor::strike("Tab");
        return EventLoop::until([&] { return Compositor::picture() != before; });
    }

    KernelDevices devices;
    KernelDevice& keyboard = devices.plugIn(keyboardKind());
    Compositor compositor;

private:
    QLocalServer m_xServer;
};

TEST_F(WaylandProgram, ASecondStartOpensThePanelAsASmallWindow)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    EXPECT_FALSE(openWindow());

    EXPECT_TRUE(startAgain());

    ASSERT_TRUE(opens(panelWidth));
    EXPECT_TRUE(isDrawn("panel"));
    EXPECT_EQ(openWindow()->program, "app.clavo.Clavo");
    EXPECT_TRUE(openWindow()->isFloating);
}

TEST_F(WaylandProgram, TypingIsHeardInEveryWindow)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(program.plays());
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    keyboard.strike(KEY_A);
    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    keyboard.strike(KEY_A);

    EXPECT_TRUE(becomes(statsFile(), "total", 2));
}

TEST_F(WaylandProgram, EscapeAndTheLossOfTheFocusCloseThePanel)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    Compositor::strike("Escape");
    EXPECT_TRUE(closes());

    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    ASSERT_TRUE(isDrawn("panel"));
    ASSERT_TRUE(takesKeys());
    Compositor::leaveWindows();
    EXPECT_TRUE(closes());
}

TEST_F(WaylandProgram, ThePanelLeadsToTheSettings)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));

    Compositor::strikeWithControl("comma");

    ASSERT_TRUE(opens(settingsWidth));
    EXPECT_TRUE(isDrawn("settings"));
    EXPECT_TRUE(openWindow()->isFloating);
    Compositor::strike("Escape");
    EXPECT_TRUE(closes());
}

TEST_F(WaylandProgram, WithoutAKeyboardItsWindowSaysSo)
{
    keyboard.unplug();
    RunningProgram program(user.path());
    ASSERT_TRUE(program.says("clavo: autorisation : false, écoute : false"));

    ASSERT_TRUE(startAgain());

    ASSERT_TRUE(opens(panelWidth));
    EXPECT_TRUE(isDrawn("no-keyboard"));
}

TEST_F(WaylandProgram, AStartByHandWithoutThePermissionOpensThePanel)
{
    keyboard.unplug();
    RunningProgram program(user.path(), {});

    EXPECT_TRUE(opens(panelWidth));
}

/// The panel at its highest on a laptop's screen.
class WaylandPanelOnALowScreen : public WaylandProgram, public testing::WithParamInterface<QSize>
{
protected:
    WaylandPanelOnALowScreen()
    {
        keyboard.unplug();
        Compositor::resizeScreen(GetParam());
    }
    ~WaylandPanelOnALowScreen() override { Compositor::resizeScreen({1600, 1200}); }
};

TEST_P(WaylandPanelOnALowScreen, LiesOnTheScreenWithRoomForItsTitleAndABar)
{
    constexpr int titleAndBar = 30 + 44;
    RunningProgram program(user.path());
    ASSERT_TRUE(program.says("clavo: autorisation : false, écoute : false"));
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    const auto name = "low-" + std::to_string(GetParam().height());
    ASSERT_TRUE(isDrawn(name.c_str()));

    const auto panel = openWindow()->place;
    EXPECT_TRUE(QRect({}, GetParam()).contains(panel));
    EXPECT_LE(panel.height(), GetParam().height() - titleAndBar);
}

INSTANTIATE_TEST_SUITE_P(Screens, WaylandPanelOnALowScreen,
                         testing::Values(QSize(1366, 768), QSize(1280, 800)));

} // namespace
} // namespace clavo
