// SPDX-License-Identifier: MIT
//
// What a key costs the statistics on the main thread, with its save put off by a timer of the real
// main loop; and what the views ask for. The days are the argument: ten years are 3,650.
#include "stats/StatsStore.h"

#include "stats/SnapshotFile.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr auto keyInterval = 100ms; // Of a fast typist, 120 words per minute.

std::map<std::string, std::int64_t> history(std::int64_t days)
{
    std::map<std::string, std::int64_t> counts;
    const auto today = QDate::currentDate();
    for (std::int64_t back = 1; back <= days; ++back)
        counts[DayFormatter::key(today.addDays(-back))] = 9000;
    return counts;
}

/// A store with a history, typed into at a steady pace of a time that runs ahead of the real one.
class TypedStore
{
public:
    explicit TypedStore(std::int64_t days)
        : m_folder(folderWith(days)),
          store(m_folder,
                {
                    .wallClock = [this] { return std::chrono::system_clock::now() + m_ahead; },
                    .runInBackground = [](const std::function<void()>&) {},
                })
    {
    }
    ~TypedStore() { std::filesystem::remove_all(m_folder); }
    TypedStore(const TypedStore&) = delete;
    TypedStore& operator=(const TypedStore&) = delete;

    /// Time between keys, in which the main loop runs.
    void pause(std::chrono::milliseconds time = keyInterval)
    {
        m_ahead += time;
        QCoreApplication::processEvents();
    }

private:
    static std::filesystem::path folderWith(std::int64_t days)
    {
        auto pattern = (std::filesystem::temp_directory_path() / "clavo-bench-XXXXXX").string();
        std::filesystem::path folder = mkdtemp(pattern.data());
        std::filesystem::create_directory(folder / "Clavo");
        saveSnapshot({.daily = history(days)}, folder / "Clavo" / "stats.json");
        return folder;
    }

    std::filesystem::path m_folder;
    std::chrono::milliseconds m_ahead{0};

public:
    StatsStore store;
};

/// One by one, so that a median can be told.
class Stopwatch
{
public:
    template <typename Work> void time(Work&& work)
    {
        const auto start = Clock::now();
        std::forward<Work>(work)();
        m_times.push_back(Nanoseconds(Clock::now() - start).count());
    }

    [[nodiscard]] double last() const { return m_times.back(); }
    [[nodiscard]] double quantile(double part)
    {
        std::ranges::sort(m_times);
        return m_times[static_cast<std::size_t>(part * static_cast<double>(m_times.size() - 1))];
    }

private:
    std::vector<double> m_times;
};

void tell(benchmark::State& state, Stopwatch& watch)
{
    state.counters["median_ns"] = watch.quantile(0.5);
    state.counters["p99_ns"] = watch.quantile(0.99);
    state.counters["max_ns"] = watch.quantile(1);
}

/// Beside it, in turn, the increment of a bare map with as many days.
void recordKey(benchmark::State& state)
{
    TypedStore typed(state.range(0));
    auto bare = history(state.range(0));
    const auto today = DayFormatter::key(QDate::currentDate());
    for (int i = 0; i < 600; ++i) { // The speed's minute is full.
        typed.pause();
        typed.store.record(true);
    }
    Stopwatch record;
    Stopwatch increment;
    while (state.KeepRunning()) {
        typed.pause();
        record.time([&] { typed.store.record(true); });
        increment.time([&] { benchmark::DoNotOptimize(++bare[today]); });
        state.SetIterationTime(record.last() / 1e9);
    }
    tell(state, record);
    state.counters["map_median_ns"] = increment.quantile(0.5);
    state.counters["ratio"] = record.quantile(0.5) / increment.quantile(0.5);
}

void recordFirstKeyOfADay(benchmark::State& state)
{
    TypedStore typed(state.range(0));
    typed.store.record(true);
    Stopwatch record;
    while (state.KeepRunning()) {
        typed.pause(24h);
        record.time([&] { typed.store.record(true); });
        state.SetIterationTime(record.last() / 1e9);
    }
    tell(state, record);
}

void readStreak(benchmark::State& state)
{
    const TypedStore typed(state.range(0));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(typed.store.streak());
}

void readLastDays(benchmark::State& state)
{
    const TypedStore typed(state.range(0));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(typed.store.lastDays());
}

void days(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("days")->Arg(0)->Arg(3650)->Arg(100'000);
}

BENCHMARK(recordKey)->Apply(days)->UseManualTime();
BENCHMARK(recordFirstKeyOfADay)->Apply(days)->UseManualTime()->Iterations(300);
BENCHMARK(readStreak)->Apply(days);
BENCHMARK(readLastDays)->Apply(days);

} // namespace
} // namespace clavo

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
