// SPDX-License-Identifier: MIT
#include "platform/procfs/TerminalSecureInput.h"

#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"
#include "unit/platform/Shell.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include <termios.h>
#include <unistd.h>

namespace clavo
{
namespace
{

class TerminalSecureInputTest : public testing::Test
{
protected:
    [[nodiscard]] bool becomes(SecureReason reason) const
    {
        return EventLoop::until([&] { return secureInput->reason() == reason; });
    }

    EventLoop loop;
    std::unique_ptr<TerminalSecureInput> secureInput =
        makeTerminalSecureInput(TerminalSecureInput::Unknown::noTerminal);
};

TEST_F(TerminalSecureInputTest, FollowsTheEchoOfAnyTerminalOfTheProgramInFront)
{
    const Shell first;
    const Shell second;
    second.set(ECHO, false);

    secureInput->setFocus(getpid());
    ASSERT_TRUE(becomes(SecureReason::silentTerminal));

    // Known from now on: the next event has the answer without a turn of the loop.
    second.set(ECHO, true);
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
    first.set(ECHO, false);
    EXPECT_EQ(secureInput->reason(), SecureReason::silentTerminal);
    first.set(ECHO, true);
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(TerminalSecureInputTest, NoticesATerminalThatComesLater)
{
    secureInput->setFocus(getpid());

    const Shell shell;
    shell.set(ECHO, false);

    EXPECT_TRUE(becomes(SecureReason::silentTerminal));
}

TEST_F(TerminalSecureInputTest, EndsWithTheTerminal)
{
    {
        const Shell shell;
        shell.set(ECHO, false);
        secureInput->setFocus(getpid());
        ASSERT_TRUE(becomes(SecureReason::silentTerminal));
    }

    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(TerminalSecureInputTest, ForgetsTheTerminalsWhenAnotherProgramHasFocus)
{
    const Shell shell;
    shell.set(ECHO, false);
    secureInput->setFocus(getpid());
    ASSERT_TRUE(becomes(SecureReason::silentTerminal));

    secureInput->setFocus(0);
    EXPECT_EQ(secureInput->reason(), SecureReason::none);

    // Known still, without a turn of the loop.
    secureInput->setFocus(getpid());
    EXPECT_EQ(secureInput->reason(), SecureReason::silentTerminal);
}

TEST_F(TerminalSecureInputTest, TakesOnlyTheLastOfSeveralQuickChanges)
{
    const Shell shell;
    shell.set(ECHO, false);

    secureInput->setFocus(getpid());
    secureInput->setFocus(0);
    secureInput->setFocus(1 << 30);
    secureInput->setFocus(getpid());

    EXPECT_TRUE(becomes(SecureReason::silentTerminal));
}

TEST_F(TerminalSecureInputTest, MayGoWhileItLooks)
{
    const Shell shell;
    auto shortLived = makeTerminalSecureInput(TerminalSecureInput::Unknown::noTerminal);

    shortLived->setFocus(getpid());

    EXPECT_EQ(shortLived->reason(), SecureReason::none);
}

/// A folder with the terminals that there are.
class UnknownFocusTest : public testing::Test
{
protected:
    void add(const Shell& shell) const
    {
        const std::filesystem::path file = shell.file();
        create_symlink(file, folder.path() / file.filename());
    }
    void watch()
    {
        secureInput =
            makeTerminalSecureInput(TerminalSecureInput::Unknown::everyTerminal, folder.path());
    }
    /// Switches the terminal's echo off as soon as that is noticed, that is, once it has been seen
    /// with it; true if it comes to that.
    [[nodiscard]] bool fallsSilent(const Shell& shell) const
    {
        return EventLoop::until([&] {
            shell.set(ECHO, false);
            const bool isNoticed = secureInput->isEnabled();
            shell.set(ECHO, !isNoticed);
            return isNoticed;
        });
    }

    EventLoop loop;
    TemporaryFolder folder;
    std::unique_ptr<TerminalSecureInput> secureInput;
};

TEST_F(UnknownFocusTest, FollowsTheEchoOfEveryTerminal)
{
    const Shell later;
    const Shell shell;
    add(shell);
    create_symlink("/dev/ptmx", folder.path() / "ptmx"); // To be left alone.
    watch();
    add(later);
    EXPECT_EQ(secureInput->reason(), SecureReason::none);

    for (const auto* terminal : {&shell, &later}) {
        ASSERT_TRUE(fallsSilent(*terminal));
        terminal->set(ECHO, true);
        EXPECT_FALSE(secureInput->isEnabled());
    }
}

TEST_F(UnknownFocusTest, TerminalThatNeverEchoesDoesNotCount)
{
    const Shell silent;
    silent.set(ECHO, false);
    const Shell shell;
    add(silent);
    add(shell);
    watch();
    ASSERT_TRUE(fallsSilent(shell)) << "both have been seen";

    shell.set(ECHO, true);

    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(UnknownFocusTest, OnceTheProgramIsKnownOnlyItsTerminalsCount)
{
    const Shell shell;
    add(shell);
    watch();
    ASSERT_TRUE(fallsSilent(shell));

    secureInput->setFocus(1 << 30);
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
    secureInput->setFocus(0);
    EXPECT_EQ(secureInput->reason(), SecureReason::silentTerminal);
    secureInput->setFocus(getpid());
    EXPECT_EQ(secureInput->reason(), SecureReason::silentTerminal);
}

} // namespace
} // namespace clavo
