// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"

namespace clavo
{
namespace
{

class ProgramPanel : public WindowFixture
{
};

TEST_F(ProgramPanel, IsNotThereUnasked)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    EXPECT_FALSE(openWindow("clavo"));
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
