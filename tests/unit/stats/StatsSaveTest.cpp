// SPDX-License-Identifier: MIT
#include "unit/stats/StatsStoreFixture.h"

#include "fakes/FileSizeLimit.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <fstream>
#include <optional>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

class StatsSave : public StatsStoreFixture
{
protected:
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(file.parent_path()))
            result.push_back(entry.path().filename());
        return result;
    }

    /// A store with more days than fit into the limit of a full disk.
    StatsStore largeStore()
    {
        DailyCounts counts;
        for (int day = 0; day < 1000; ++day)
            counts[DayFormatter::key(QDate(2020, 1, 1).addDays(day))] = 1000;
        return storeWithDays(counts);
    }
    static constexpr rlim_t fullDisk = 4096;
};

TEST_F(StatsSave, FolderIsMadeWithItsParents)
{
    const auto home = folder.path() / "not" / "there";

    const StatsStore stats(home, surroundings());

    EXPECT_TRUE(fs::is_directory(home / "Clavo"));
    EXPECT_TRUE(fs::is_empty(home / "Clavo"));
}

TEST_F(StatsSave, NothingIsSavedWithoutAChange)
{
    const auto stats = store();

    time.advance(1h);

    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(time.waiting(), 0U);
}

TEST_F(StatsSave, ComesTwoSecondsAfterAKey)
{
    auto stats = store();
    stats.record(true);

    time.advance(1999ms);
    EXPECT_FALSE(fs::exists(file));
    time.advance(1ms);

    EXPECT_EQ(saved(), stats.data());
}

TEST_F(StatsSave, IsPutOffByEveryKey)
{
    auto stats = store();
    for (int key = 0; key < 100; ++key) {
        stats.record(true);
        time.advance(1999ms);
        ASSERT_FALSE(fs::exists(file));
    }

    time.advance(1ms);

    EXPECT_EQ(saved(), stats.data());
    EXPECT_EQ(saved().total, 100);
    EXPECT_EQ(time.waiting(), 0U);
}

TEST_F(StatsSave, HappensOnceForKeysInARow)
{
    holdsSavesBack = true;
    auto stats = store();
    typeEvenly(stats, 100, 50ms);

    time.advance(1h);

    EXPECT_EQ(begunSaves.size(), 1U);
}

TEST_F(StatsSave, HappensAgainAfterAPause)
{
    auto stats = store();
    stats.record(true);
    time.advance(2s);
    stats.record(true);
    EXPECT_EQ(saved().total, 1);

    time.advance(2s);

    EXPECT_EQ(saved().total, 2);
}

TEST_F(StatsSave, WritesWhatTheStatisticsWereAtTheLastKey)
{
    holdsSavesBack = true;
    auto stats = store();
    type(stats, 3);
    const auto then = stats.data();
    time.advance(2s);

    type(stats, 4);
    finishSaves();

    EXPECT_EQ(saved(), then);
    EXPECT_EQ(saved().total, 3);
}

TEST_F(StatsSave, IsNotStoppedByAKeyOnceItHasBegun)
{
    holdsSavesBack = true;
    auto stats = store();
    stats.record(true);
    time.advance(2s);

    stats.record(true);
    time.advance(2s);

    ASSERT_EQ(begunSaves.size(), 2U);
    begunSaves.front()();
    begunSaves.pop_front();
    EXPECT_EQ(saved().total, 1);
    finishSaves();
    EXPECT_EQ(saved().total, 2);
}

TEST_F(StatsSave, ThatIsStillToComeIsDroppedWithTheStore)
{
    std::optional<StatsStore> stats(std::in_place, folder.path(), surroundings());
    stats->record(true);

    stats.reset();
    time.advance(1h);

    EXPECT_FALSE(fs::exists(file));
}

TEST_F(StatsSave, ThatHasBegunOutlivesTheStore)
{
    holdsSavesBack = true;
    std::optional<StatsStore> stats(std::in_place, folder.path(), surroundings());
    stats->record(true);
    time.advance(2s);

    stats.reset();
    finishSaves();

    EXPECT_EQ(saved().total, 1);
}

TEST_F(StatsSave, OfAResetLeavesTheEmptyStatistics)
{
    auto stats = storeWithDays({{"2026-11-15", 60}});
    const auto before = saved();

    stats.reset();

    time.advance(1999ms);
    EXPECT_EQ(saved(), before);
    time.advance(1ms);
    EXPECT_EQ(saved(), StatsStore::Snapshot());
    EXPECT_EQ(store().data(), StatsStore::Snapshot());
}

TEST_F(StatsSave, IsWhatTheNextStartLoads)
{
    StatsStore::Snapshot last;
    {
        auto stats = storeWithDays({{"2026-11-14", 7}, {"2026-11-15", 5}});
        typeEvenly(stats, 300, 200ms);
        time.advance(2s);
        last = stats.data();
    }

    const auto stats = store();

    EXPECT_EQ(stats.data(), last);
    EXPECT_EQ(stats.bestWPM(), 60);
    EXPECT_EQ(stats.currentWPM(), 0);
}

TEST_F(StatsSave, HoldsCountsAndNothingElse)
{
    auto stats = store();
    typeEvenly(stats, 300, 200ms);

    time.advance(2s);

    std::ifstream stream(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}),
              R"({"bestWPM":60,"daily":{"2026-11-15":300},"total":300})");
    EXPECT_THAT(names(), UnorderedElementsAre("stats.json"));
}

class BrokenStatsFile : public StatsSave, public testing::WithParamInterface<const char*>
{
};

TEST_P(BrokenStatsFile, CountsAsEmptyAndIsReplaced)
{
    writeText(GetParam());
    auto stats = store();
    EXPECT_EQ(stats.data(), StatsStore::Snapshot());

    stats.record(false);
    time.advance(2s);

    EXPECT_EQ(saved(), (StatsStore::Snapshot{
                           .daily = DailyCounts({{"2026-11-15", 1}}), .bestWPM = 0, .total = 1}));
    EXPECT_THAT(names(), UnorderedElementsAre("stats.json"));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, BrokenStatsFile,
                         testing::Values("", "{", "[]", "no JSON at all",
                                         R"({"bestWPM":1,"daily":{},"total":)",
                                         R"({"bestWPM":1,"daily":{}})",
                                         R"({"bestWPM":1,"daily":{},"total":2.5})",
                                         R"({"bestWPM":1,"daily":{},"total":99999999999999999999})",
                                         R"({"bestWPM":1,"daily":{"2026-11-15":"5"},"total":2})"));

TEST_F(StatsSave, PipeInTheFilesPlaceIsReplaced)
{
    fs::create_directories(file.parent_path());
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    auto stats = store();

    stats.record(false);
    time.advance(2s);

    EXPECT_EQ(saved().total, 1);
}

TEST_F(StatsSave, FullDiskLosesNothingAndTheNextSaveTriesAgain)
{
    auto stats = largeStore();
    const auto before = saved();
    {
        const FileSizeLimit limit(fullDisk);
        stats.record(false);
        time.advance(2s);
    }
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(stats.total(), 1'000'001);
    EXPECT_THAT(names(), UnorderedElementsAre("stats.json"));

    time.advance(1h);
    EXPECT_EQ(saved(), before);
    stats.record(false);
    time.advance(2s);

    EXPECT_EQ(saved(), stats.data());
    EXPECT_EQ(saved().total, 1'000'002);
}

TEST_F(StatsSave, FolderThatCannotBeMadeLosesNothingAndTheNextSaveTriesAgain)
{
    std::ofstream(folder.path() / "Clavo") << "a file where the folder should be";
    auto stats = store();
    stats.record(false);
    time.advance(2s);
    EXPECT_EQ(stats.total(), 1);

    fs::remove(folder.path() / "Clavo");
    fs::create_directory(folder.path() / "Clavo");
    stats.record(false);
    time.advance(2s);

    EXPECT_EQ(saved().total, 2);
}

TEST_F(StatsSave, FolderThatIsTakenAwayLosesNothing)
{
    auto stats = storeWithDays({{"2026-11-15", 60}});
    fs::rename(folder.path() / "Clavo", folder.path() / "away");
    stats.record(false);
    time.advance(2s);
    EXPECT_EQ(stats.today(), 61);

    fs::rename(folder.path() / "away", folder.path() / "Clavo");
    stats.record(false);
    time.advance(2s);

    EXPECT_EQ(saved().total, 1'000'002);
}

TEST_F(StatsSave, WhatAKilledProcessLeftIsRemovedAtTheNextStart)
{
    fs::create_directories(file.parent_path() / "Packs");
    std::ofstream(file.parent_path() / ".clavo-new-a1B2c3") << "half a fi";

    const auto stats = store();

    EXPECT_THAT(names(), UnorderedElementsAre("Packs"));
}

class DemonstrationSave : public StatsSave
{
protected:
    DemonstrationSave() { qputenv("TMPDIR", QByteArray::fromStdString(m_temporary)); }
    ~DemonstrationSave() override
    {
        if (m_previous.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_previous);
    }

    QByteArray m_previous = qgetenv("TMPDIR");
    fs::path m_temporary = folder.path();
    fs::path m_demoFile = m_temporary / "clavo-demo-stats.json";
};

TEST_F(DemonstrationSave, ReadsNothingAndMakesNothing)
{
    EXPECT_TRUE(saveSnapshot({.daily = {}, .bestWPM = 999, .total = 999}, m_demoFile));
    writeStats({.daily = {}, .bestWPM = 888, .total = 888});

    const StatsStore demo({1, 2}, 72, surroundings());
    time.advance(1h);

    EXPECT_EQ(demo.total(), 412383);
    EXPECT_EQ(demo.bestWPM(), 72);
    EXPECT_EQ(loadSnapshot(m_demoFile).total, 999);
}

TEST_F(DemonstrationSave, GoesToTheTemporaryFolder)
{
    writeStats({.daily = {}, .bestWPM = 888, .total = 888});
    StatsStore demo({1, 2}, 72, surroundings());

    demo.record(true);
    time.advance(2s);

    EXPECT_EQ(loadSnapshot(m_demoFile),
              (StatsStore::Snapshot{.daily = DailyCounts({{"2026-11-14", 1}, {"2026-11-15", 3}}),
                                    .bestWPM = 72,
                                    .total = 412384}));
    EXPECT_EQ(saved().total, 888);
}

} // namespace
} // namespace clavo
