// SPDX-License-Identifier: MIT
#include "desktop/user/KernelDevices.h"
#include "desktop/user/ProgramFixture.h"

#include <linux/input-event-codes.h>

namespace clavo
{
namespace
{

/// The real program where it listens to the kernel's devices, as on a Wayland desktop.
class ProgramOnDevices : public ProgramFixture
{
protected:
    ProgramOnDevices() { qputenv("CLAVO_INPUT", "evdev"); }
    ~ProgramOnDevices() override { qunsetenv("CLAVO_INPUT"); }

    KernelDevices devices;
};

TEST_F(ProgramOnDevices, TypingIsHeardAndCounted)
{
    auto& keyboard = devices.plugIn(keyboardKind());
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(program.plays());
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    for (int key = 0; key < 5; ++key)
        keyboard.strike(KEY_A);

    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
    EXPECT_TRUE(becomes(statsFile(), "total", 5));
}

TEST_F(ProgramOnDevices, TheDesktopsOwnEventsAreNotHeardBeside)
{
    auto& keyboard = devices.plugIn(keyboardKind());
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    hands.strike(keyA);
    hands.strike(keyA);
    keyboard.strike(KEY_A);

    EXPECT_TRUE(becomes(statsFile(), "total", 1));
}

TEST_F(ProgramOnDevices, WithoutAKeyboardItSaysSoAndStartsAgainWhenThereIsOne)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.says("clavo: autorisation : false, écoute : false"));

    auto& keyboard = devices.plugIn(keyboardKind());

    ASSERT_TRUE(program.says("clavo: autorisation accordée : relance de Clavo"));
    ASSERT_TRUE(program.endsWith(0));
    SinkRecorder recorder(desktopSink);
    EXPECT_TRUE(EventLoop::until([&] {
        keyboard.strike(KEY_A); // Heard by the one that was started.
        return peak(recorder.recording()) > 0.01F;
    }));
}

} // namespace
} // namespace clavo
