// SPDX-License-Identifier: MIT
#include "fakes/TemporaryFolder.h"
#include "files/Descriptor.h"
#include "files/WholeFile.h"
#include "stats/DayFormatter.h"
#include "stats/SnapshotFile.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <numeric>
#include <random>
#include <thread>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

/// A process that saves the statistics again and again.
class Saver
{
public:
    explicit Saver(const fs::path& folder)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        for (const int end : ends)
            EXPECT_EQ(::fcntl(end, F_SETFD, FD_CLOEXEC), 0);
        m_steps = ends[0];
        const Descriptor writingEnd(ends[1]);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = CLAVO_STATS_SAVER;
        std::string argument = folder;
        std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
        EXPECT_EQ(::posix_spawn(&m_process, program.c_str(), &actions, nullptr, arguments.data(),
                                environ),
                  0);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~Saver() { ::close(m_steps); }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;

    /// Waits until it is ready, or has saved once more.
    void awaitStep() const
    {
        char step = 0;
        EXPECT_EQ(::read(m_steps, &step, 1), 1);
    }

    /// Whether it was still running.
    [[nodiscard]] bool kill() const
    {
        ::kill(m_process, SIGKILL);
        int status = 0;
        ::waitpid(m_process, &status, 0);
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private:
    pid_t m_process = -1;
    int m_steps = -1;
};

/// Three years of days whose keys add up to the total.
StatsSnapshot threeYears()
{
    std::map<std::string, std::int64_t> counts;
    for (int day = 0; day < 1000; ++day)
        counts[DayFormatter::key(QDate(2010, 1, 1).addDays(day))] = 9000 + day;
    std::int64_t total = 0;
    for (const auto& [day, count] : counts)
        total += count;
    return {.daily = counts, .bestWPM = 80, .total = total};
}

std::int64_t sumOfDays(const StatsSnapshot& snapshot)
{
    std::int64_t sum = 0;
    for (const auto& [day, count] : snapshot.daily)
        sum += count;
    return sum;
}

double secondsOfASave(const fs::path& folder)
{
    constexpr int saves = 5;
    const Saver saver(folder);
    saver.awaitStep();
    const auto start = std::chrono::steady_clock::now();
    for (int save = 0; save < saves; ++save)
        saver.awaitStep();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(saver.kill());
    return time.count() / saves;
}

TEST(KilledSaver, AlwaysLeavesOneWholeSnapshot)
{
    constexpr int kills = 300;
    const TemporaryFolder folder;
    const auto file = folder.path() / "Clavo" / "stats.json";
    fs::create_directories(file.parent_path());
    auto previous = threeYears();
    ASSERT_TRUE(saveSnapshot(previous, file));
    std::mt19937 random(1);
    std::uniform_int_distribution<int> steps(1, 2);
    std::uniform_real_distribution<double> moment(0, 2 * secondsOfASave(folder.path()));
    int insideASave = 0;

    for (int kill = 0; kill < kills; ++kill) {
        const Saver saver(folder.path());
        for (int step = steps(random); step > 0; --step)
            saver.awaitStep();
        // A random moment, not a wait for an event.
        std::this_thread::sleep_for(std::chrono::duration<double>(moment(random)));
        ASSERT_TRUE(saver.kill());

        const auto text = readRegularFile(file, 1 << 20);
        ASSERT_TRUE(text.has_value()) << kill;
        const auto snapshot = parseSnapshot(*text);
        ASSERT_TRUE(snapshot.has_value()) << kill << ": " << *text;
        EXPECT_EQ(sumOfDays(*snapshot), snapshot->total) << kill;
        EXPECT_EQ(snapshot->bestWPM, previous.bestWPM) << kill;
        EXPECT_GE(snapshot->total, previous.total) << kill;
        const auto files = std::distance(fs::directory_iterator(file.parent_path()), {});
        EXPECT_LE(files, 2) << kill;
        insideASave += files == 2 ? 1 : 0;
        previous = *snapshot;
    }

    const auto saves = previous.total - threeYears().total;
    EXPECT_GT(saves, 0);
    std::printf("%d kills, %d of them inside a save, %lld saves: one whole snapshot each time\n",
                kills, insideASave, static_cast<long long>(saves));
}

} // namespace
} // namespace clavo
