// SPDX-License-Identifier: MIT
#include "platform/procfs/Processes.h"

#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <string>

#include <unistd.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

// Device numbers as the kernel prints them: 34816 is 136:0.
constexpr auto shell = "4711 (bash) S 4700 4711 4711 34819 4800 4194304 0 0 0 0";

TEST(ProcessStat, HoldsTheParentAndTheTerminal)
{
    EXPECT_EQ(parseStat(shell), (Process{4711, 4700, "bash", 3, 4711}));
}

TEST(ProcessStat, OfAProcessWithoutATerminalHasNone)
{
    EXPECT_EQ(parseStat("2 (kthreadd) S 0 0 0 0 -1 2129984 0"), (Process{2, 0, "kthreadd", {}}));
}

TEST(ProcessStat, OfAProcessOnAConsoleHasNone)
{
    EXPECT_EQ(parseStat("900 (agetty) S 1 900 900 1025 900 4194560 0"),
              (Process{900, 1, "agetty", {}, 900}));
}

TEST(ProcessStat, KnowsTerminalsOfEveryMajorNumber)
{
    EXPECT_EQ(parseStat("9 (a) S 1 9 9 35072 9 0"), (Process{9, 1, "a", 256, 9}));   // 137:0
    EXPECT_EQ(parseStat("9 (a) S 1 9 9 1083647 9 0"), (Process{9, 1, "a", 511, 9})); // 136:511
}

TEST(ProcessStat, IsReadBehindAnyName)
{
    EXPECT_EQ(parseStat("5 (a) S 1 1 1 34816 (b) c) R 4 5 5 34817 5 0"),
              (Process{5, 4, "a) S 1 1 1 34816 (b) c", 1, 5}));
}

TEST(ProcessStat, OfAProcessThatHasEndedIsNone)
{
    EXPECT_EQ(parseStat("5 (a) Z 1 5 5 34816 5 0"), std::nullopt);
}

TEST(ProcessStat, ThatIsCutOffIsNone)
{
    for (const std::string_view text : {"", "5", "5 (a", "5 )a(", "5 (a)", "5 (a) S",
                                        "5 (a) S 4 5 5", "x (a) S 4 5 5 0 5", "5 (a) S x"})
        EXPECT_EQ(parseStat(text), std::nullopt) << text;
}

TEST(RunningProcesses, AreTheNumberedFoldersWithAReadableState)
{
    const TemporaryFolder folder;
    const auto write = [&](const char* process, std::string_view stat) {
        fs::create_directory(folder.path() / process);
        std::ofstream(folder.path() / process / "stat") << stat;
    };
    write("4711", shell);
    write("12", "12 (two\nlines) S 1 12 12 0 -1 0");
    write("13", "");
    write("self", shell);
    fs::create_directory(folder.path() / "14");

    EXPECT_THAT(runningProcesses(folder.path()),
                UnorderedElementsAre(Process{4711, 4700, "bash", 3, 4711},
                                     Process{12, 1, "two\nlines", {}, 12}));
    EXPECT_THAT(runningProcesses(folder.path() / "missing"), IsEmpty());
}

TEST(RunningProcesses, HoldThisOne)
{
    const auto isThis = [](const Process& process) {
        return process.id == getpid() && process.parent == getppid();
    };

    EXPECT_EQ(std::ranges::count_if(runningProcesses(), isThis), 1);
}

TEST(Terminals, OfAProcessAreThoseOfItsDescendants)
{
    // Children stand before their parents.
    const std::vector<Process> all{{5, 4, "a", 2},  {4, 3, "b", 1}, {3, 2, "c", {}},
                                   {2, 1, "d", {}}, {6, 3, "e", 7}, {7, 3, "f", 7},
                                   {8, 1, "g", 9},  {1, 0, "h", {}}};

    EXPECT_THAT(terminalsBelow(2, all), ElementsAre(1, 2, 7));
    EXPECT_THAT(terminalsBelow(4, all), ElementsAre(2));
    EXPECT_THAT(terminalsBelow(8, all), IsEmpty());
    EXPECT_THAT(terminalsBelow(77, all), IsEmpty());
}

TEST(Terminals, OneThatAProgramWasStartedFromIsNotItsOwn)
{
    const std::vector<Process> all{{2, 1, "a", 5}, {3, 2, "b", 5}, {4, 3, "c", 6}};

    EXPECT_THAT(terminalsBelow(2, all), ElementsAre(6));
}

TEST(Terminals, OfAMultiplexerAreThoseOfItsServer)
{
    const std::vector<Process> all{{9, 8, "bash", 6},         {8, 1, "tmux: server", {}},
                                   {2, 1, "xterm", {}},       {3, 2, "bash", 1},
                                   {4, 3, "tmux: client", 1}, {7, 6, "bash", 5},
                                   {6, 1, "screen", {}}};

    EXPECT_THAT(terminalsBelow(2, all), ElementsAre(1, 6));
    EXPECT_THAT(terminalsBelow(3, all), ElementsAre(6)) << "1 is its own";
}

TEST(Terminals, OfAMultiplexerWithoutAServerAreItsOwn)
{
    const std::vector<Process> all{{2, 1, "xterm", {}}, {4, 2, "tmux: client", 1}};

    EXPECT_THAT(terminalsBelow(2, all), ElementsAre(1));
}

TEST(Terminals, ACircleOfParentsEnds)
{
    const std::vector<Process> all{{2, 3, "a", 1}, {3, 2, "b", 2}, {4, 4, "c", 3}};

    EXPECT_THAT(terminalsBelow(2, all), ElementsAre(2));
    EXPECT_THAT(terminalsBelow(4, all), IsEmpty());
}

TEST(LeaderAt, IsTheFirstProcessOfTheTerminalsSession)
{
    const std::vector<Process> processes{{10, 1, "xterm", {}, 10},
                                         {20, 10, "bash", 3, 20},
                                         {21, 20, "vim", 3, 20},
                                         {30, 10, "bash", 4, 29}}; // Its leader has ended.

    EXPECT_EQ(leaderAt(3, processes), 20);
    EXPECT_EQ(leaderAt(4, processes), 0);
    EXPECT_EQ(leaderAt(5, processes), 0);
}

} // namespace
} // namespace clavo
