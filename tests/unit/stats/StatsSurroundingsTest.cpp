// SPDX-License-Identifier: MIT
#include "stats/StatsStore.h"

#include "fakes/SimulatedTime.h"
#include "fakes/TemporaryFolder.h"
#include "stats/SnapshotFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QThread>

#include <algorithm>
#include <atomic>
#include <future>
#include <numeric>
#include <optional>
#include <thread>
#include <vector>

namespace clavo
{
namespace
{

TEST(BackgroundThread, DoesNotHoldUpTheCaller)
{
    const auto run = StatsSurroundings::oneThread();
    std::promise<void> callerWentOn;
    std::promise<std::thread::id> thread;

    run([&, mayEnd = callerWentOn.get_future().share()] {
        mayEnd.wait();
        thread.set_value(std::this_thread::get_id());
    });
    callerWentOn.set_value();

    EXPECT_NE(thread.get_future().get(), std::this_thread::get_id());
}

TEST(BackgroundThread, StandsBehindAllOthers)
{
    std::promise<QThread::Priority> priority;
    const auto run = StatsSurroundings::oneThread();

    run([&] { priority.set_value(QThread::currentThread()->priority()); });

    EXPECT_EQ(priority.get_future().get(), QThread::IdlePriority);
}

TEST(BackgroundThread, RunsOneTaskAtATimeInTheOrderTheyCame)
{
    std::vector<int> order; // Without a lock: the thread sanitizer sees two at a time.
    std::atomic<int> running = 0;
    std::atomic<int> mostAtATime = 0;
    auto run = std::optional(StatsSurroundings::oneThread());

    for (int task = 0; task < 100; ++task) {
        (*run)([&, task] {
            mostAtATime = std::max(mostAtATime.load(), ++running);
            order.push_back(task);
            --running;
        });
    }
    run.reset();

    std::vector<int> expected(100);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
    EXPECT_EQ(mostAtATime, 1);
}

TEST(BackgroundThread, StoreWaitsForASaveThatHasBegun)
{
    const TemporaryFolder folder;
    SimulatedTime time;
    StatsSurroundings surroundings;
    surroundings.makeTimer = [&] { return time.makeTimer(); };
    {
        StatsStore stats(folder.path(), std::move(surroundings));
        stats.record(true);
        time.elapse();
        stats.record(true);
    }

    EXPECT_EQ(loadSnapshot(folder.path() / "Clavo" / "stats.json").total, 1);
}

} // namespace
} // namespace clavo
