// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"
#include "desktop/user/HostPrograms.h"

#include <QDeadlineTimer>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class ProgramPanel : public WindowFixture
{
};

/// Whether the panel opens by itself within the time after which a start without a tray opens it.
class PanelUnasked : public WindowFixture
{
protected:
    static bool opensByItself()
    {
        QDeadlineTimer time(2000ms + 1500ms); // For the tray, and for the window.
        bool opened = false;
        EXPECT_TRUE(EventLoop::until([&] {
            opened = opened || openWindow("clavo");
            return opened || time.hasExpired();
        }));
        return opened;
    }

    HostPrograms hosts;
};

TEST_F(PanelUnasked, OpensOnceAfterAStartByHandWithoutATray)
{
    RunningProgram program(user.path(), {});
    ASSERT_TRUE(program.listens());

    ASSERT_TRUE(opens(panelWidth));
    hands.strike(keyEscape);
    ASSERT_TRUE(closes());
    EXPECT_FALSE(opensByItself());
}

TEST_F(PanelUnasked, StaysClosedWhereTheIconIsInATray)
{
    hosts.startXEmbedHost();
    RunningProgram program(user.path(), {});
    ASSERT_TRUE(program.listens());

    EXPECT_FALSE(opensByItself());
}

TEST_F(PanelUnasked, StaysClosedAfterAStartInTheBackground)
{
    RunningProgram program(user.path(), {"--background"});
    ASSERT_TRUE(program.listens());

    EXPECT_FALSE(opensByItself());
    RunningProgram second(user.path(), {"--background"});
    EXPECT_TRUE(second.endsWith(0));
    EXPECT_FALSE(opensByItself());
}

TEST_F(PanelUnasked, StaysClosedWhenTheProgramTakesItsOwnPlace)
{
    RunningProgram first(user.path());
    ASSERT_TRUE(first.listens());

    RunningProgram program(user.path(), {"--replace", "--background"});
    ASSERT_TRUE(first.endsWith(0));
    ASSERT_TRUE(program.listens());

    EXPECT_FALSE(opensByItself());
}

TEST_F(ProgramPanel, ASecondStartOpensItAndEscapeClosesIt)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    EXPECT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    hands.strike(keyEscape);
    EXPECT_TRUE(closes());

    EXPECT_TRUE(startAgain());
    EXPECT_TRUE(opens(panelWidth));
}

TEST_F(ProgramPanel, KeysAreHeardAndCountedWhileItIsOpen)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(program.plays());
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    for (int key = 0; key < 5; ++key)
        hands.strike(keyA);

    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
    EXPECT_TRUE(becomes(statsFile(), "total", 5));
    EXPECT_TRUE(openWindow("clavo"));
}

} // namespace
} // namespace clavo
