// SPDX-License-Identifier: MIT
#include "platform/procfs/Terminal.h"

#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"
#include "unit/platform/Shell.h"

#include <gtest/gtest.h>

#include <fstream>

namespace clavo
{
namespace
{

constexpr pid_t nobody = 0;

/// A terminal that stays open, and one that is opened for every question.
class TerminalTest : public testing::TestWithParam<bool>
{
protected:
    [[nodiscard]] static pid_t leaderOf(const Shell& shell)
    {
        return GetParam() ? shell.leader() : nobody;
    }

    EventLoop loop;
};

INSTANTIATE_TEST_SUITE_P(Leader, TerminalTest, testing::Bool(), [](const auto& leader) {
    return leader.param ? "IsKnown" : "IsNotKnown";
});

TEST_P(TerminalTest, ReadsWithoutEchoWhereLinesAreNotShown)
{
    const Shell shell;
    const Terminal terminal(shell.file(), leaderOf(shell));
    EXPECT_FALSE(terminal.readsWithoutEcho());

    shell.set(ECHO, false);
    EXPECT_TRUE(terminal.readsWithoutEcho());

    shell.set(ECHO, true);
    EXPECT_FALSE(terminal.readsWithoutEcho());
}

TEST_P(TerminalTest, DoesNotWhereAProgramReadsKeyByKey)
{
    const Shell shell;
    const Terminal terminal(shell.file(), leaderOf(shell));

    shell.set(ECHO | ICANON, false);

    EXPECT_FALSE(terminal.readsWithoutEcho());
}

TEST_P(TerminalTest, DoesNotOutliveItsPrograms)
{
    Shell shell;
    shell.set(ECHO, false);
    const Terminal terminal(shell.file(), leaderOf(shell));
    ASSERT_TRUE(terminal.readsWithoutEcho());

    shell.end();

    EXPECT_TRUE(EventLoop::until([&] { return shell.hasHungUp(); }));
}

TEST_P(TerminalTest, OfAnEndedProgramIsLeftAlone)
{
    Shell shell;
    const auto leader = leaderOf(shell);
    shell.end();
    shell.set(ECHO, false);

    const Terminal terminal(shell.file(), leader);

    EXPECT_TRUE(shell.hasHungUp());
}

TEST(Terminal, IsOneOrSilent)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "file") << "text";

    for (const auto& file :
         {(folder.path() / "file").string(), (folder.path() / "missing").string(),
          std::string("/dev/null"), std::string()})
        EXPECT_FALSE(Terminal(file, nobody).readsWithoutEcho()) << file;
}

} // namespace
} // namespace clavo
