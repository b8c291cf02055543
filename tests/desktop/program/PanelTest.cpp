// SPDX-License-Identifier: MIT
#include "desktop/program/ProgramFixture.h"
#include "desktop/tray/ProgramWindows.h"

namespace clavo
{
namespace
{

class ProgramPanel : public ProgramFixture
{
protected:
    static constexpr std::uint32_t keyEscape = 1;
    static constexpr int width = 330;

    /// Starts the program once more; true once that has ended well.
    [[nodiscard]] bool startAgain() const
    {
        RunningProgram second(user.path());
        return second.endsWith(0);
    }
    static bool opens()
    {
        return EventLoop::until([] {
            const auto window = openWindow("clavo");
            return window && window->width() == width;
        });
    }
    static bool closes()
    {
        return EventLoop::until([] { return !openWindow("clavo"); });
    }
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
    ASSERT_TRUE(opens());
    hands.strike(keyEscape);
    EXPECT_TRUE(closes());

    EXPECT_TRUE(startAgain());
    EXPECT_TRUE(opens());
}

TEST_F(ProgramPanel, KeysAreHeardAndCountedWhileItIsOpen)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens());
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
