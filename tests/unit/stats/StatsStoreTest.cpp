// SPDX-License-Identifier: MIT
#include "unit/stats/StatsStoreFixture.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::Each;
using testing::Field;
using testing::SizeIs;

using StatsStoreTest = StatsStoreFixture;

TEST_F(StatsStoreTest, FreshInstallHasNothing)
{
    const auto stats = store();

    EXPECT_EQ(stats.today(), 0);
    EXPECT_EQ(stats.streak(), 0);
    EXPECT_EQ(stats.total(), 0);
    EXPECT_EQ(stats.bestWPM(), 0);
    EXPECT_EQ(stats.currentWPM(), 0);
    EXPECT_EQ(stats.data(), StatsStore::Snapshot());
    EXPECT_THAT(stats.lastDays(), SizeIs(14));
    EXPECT_THAT(stats.lastDays(), Each(Field(&StatsStore::Day::count, 0)));
}

TEST_F(StatsStoreTest, LoadsWhatWasSaved)
{
    const StatsStore::Snapshot snapshot{
        .daily = DailyCounts({{"2026-11-14", 7}, {"2026-11-15", 5}}), .bestWPM = 80, .total = 99};
    writeStats(snapshot);

    const auto stats = store();

    EXPECT_EQ(stats.data(), snapshot);
    EXPECT_EQ(stats.today(), 5);
    EXPECT_EQ(stats.total(), 99);
    EXPECT_EQ(stats.bestWPM(), 80);
    EXPECT_EQ(stats.currentWPM(), 0);
}

TEST_F(StatsStoreTest, FileWithoutItsTotalIsIgnoredWhole)
{
    writeText(R"({"daily":{"2026-11-15":5},"bestWPM":80})");

    EXPECT_EQ(store().data(), StatsStore::Snapshot());
}

TEST_F(StatsStoreTest, EveryKeyCountsForTheDayAndTheTotal)
{
    auto stats = storeWithDays({{"2026-11-14", 7}, {"2026-11-15", 5}});

    stats.record(true);
    stats.record(false);

    EXPECT_EQ(stats.today(), 7);
    EXPECT_EQ(stats.total(), 1'000'002);
    EXPECT_EQ(stats.data().daily, DailyCounts({{"2026-11-14", 7}, {"2026-11-15", 7}}));
}

TEST_F(StatsStoreTest, ChangeOfTheTimeZoneCountsFromTheNextKey)
{
    auto stats = store();
    type(stats, 3); // Noon in UTC.

    setTimeZone("Pacific/Kiritimati"); // 14 hours ahead.
    type(stats, 4);

    EXPECT_EQ(stats.data().daily, DailyCounts({{"2026-11-15", 3}, {"2026-11-16", 4}}));
    EXPECT_EQ(stats.today(), 4);
}

TEST_F(StatsStoreTest, CountIsThatOfTheMomentsDay)
{
    const auto stats = storeWithDays({{"2026-11-14", 7}, {"2026-11-15", 5}});

    EXPECT_EQ(stats.count(now()), 5);
    EXPECT_EQ(stats.count(now() - 12h - 1ms), 7);
    EXPECT_EQ(stats.count(now() - 36h - 1ms), 0);
    EXPECT_EQ(stats.count(now() + 12h), 0);
    EXPECT_EQ(store().count(now() - 24h * 365), 0);
}

TEST_F(StatsStoreTest, OtherKeysThanCharactersDoNotChangeTheSpeed)
{
    auto stats = store();
    typeEvenly(stats, 10, 100ms);

    type(stats, 100);

    EXPECT_EQ(stats.currentWPM(), 2);
    EXPECT_EQ(stats.today(), 110);
    EXPECT_EQ(stats.total(), 110);
}

TEST_F(StatsStoreTest, FiveCharactersAreAWord)
{
    auto stats = store();

    typeEvenly(stats, 4, 100ms);
    EXPECT_EQ(stats.currentWPM(), 0);
    typeEvenly(stats, 1, 100ms);
    EXPECT_EQ(stats.currentWPM(), 1);
    typeEvenly(stats, 4, 100ms);
    EXPECT_EQ(stats.currentWPM(), 1);
    typeEvenly(stats, 1, 100ms);
    EXPECT_EQ(stats.currentWPM(), 2);
}

TEST_F(StatsStoreTest, CharacterExactlySixtySecondsOldStillCounts)
{
    auto stats = store();
    typeEvenly(stats, 4, 0ms);

    time.advance(60s);
    stats.record(true);

    EXPECT_EQ(stats.currentWPM(), 1);
}

TEST_F(StatsStoreTest, CharacterOlderThanSixtySecondsNoLongerCounts)
{
    auto stats = store();
    typeEvenly(stats, 4, 0ms);

    time.advance(60s + 1ms);
    stats.record(true);

    EXPECT_EQ(stats.currentWPM(), 0);
}

TEST_F(StatsStoreTest, SpeedStaysWhileNothingIsTyped)
{
    auto stats = store();
    typeEvenly(stats, 50, 100ms);

    time.advance(1h);
    stats.record(false);

    EXPECT_EQ(stats.currentWPM(), 10);
}

TEST_F(StatsStoreTest, AMinuteOfEvenTypingIsTheBest)
{
    auto stats = store();

    typeEvenly(stats, 275, 200ms); // The oldest is 54.8 seconds old.
    EXPECT_EQ(stats.currentWPM(), 55);
    EXPECT_EQ(stats.bestWPM(), 0);

    time.advance(200ms);
    typeEvenly(stats, 25, 200ms);
    EXPECT_EQ(stats.currentWPM(), 60);
    EXPECT_EQ(stats.bestWPM(), 60);
}

TEST_F(StatsStoreTest, BestIsTakenFromFiftyFiveSecondsOn)
{
    auto stats = store();
    typeEvenly(stats, 9, 1s);
    time.advance(46'999ms);
    stats.record(true);
    EXPECT_EQ(stats.currentWPM(), 2);
    EXPECT_EQ(stats.bestWPM(), 0);

    time.advance(1ms);
    stats.record(true);

    EXPECT_EQ(stats.bestWPM(), 2);
}

TEST_F(StatsStoreTest, BurstAfterAPauseIsNoBest)
{
    auto stats = store();
    typeEvenly(stats, 20, 100ms);
    time.advance(10min);

    typeEvenly(stats, 100, 100ms);

    EXPECT_EQ(stats.currentWPM(), 20);
    EXPECT_EQ(stats.bestWPM(), 0);
}

TEST_F(StatsStoreTest, BestOnlyRises)
{
    auto stats = storeWithDays({});

    typeEvenly(stats, 200, 300ms);
    EXPECT_EQ(stats.currentWPM(), 40);
    EXPECT_EQ(stats.bestWPM(), 40);
    typeEvenly(stats, 300, 200ms);
    EXPECT_EQ(stats.bestWPM(), 60);
    typeEvenly(stats, 100, 1s);

    EXPECT_EQ(stats.currentWPM(), 12);
    EXPECT_EQ(stats.bestWPM(), 60);
}

// Neither a speed nor a best can be told from times that lie ahead of the clock.
TEST_F(StatsStoreTest, ClockThatIsSetBackMakesNoBest)
{
    auto stats = store();
    typeEvenly(stats, 100, 100ms);

    setLocalTime("2026-11-15T11:00:00");
    typeEvenly(stats, 100, 1s);

    EXPECT_EQ(stats.bestWPM(), 0);
    EXPECT_EQ(stats.today(), 200);
}

TEST_F(StatsStoreTest, SpeedIsRightAgainOnceTheClockHasCaughtUp)
{
    auto stats = store();
    typeEvenly(stats, 100, 100ms);
    setLocalTime("2026-11-15T11:59:00");

    time.advance(3min);
    typeEvenly(stats, 10, 100ms);

    EXPECT_EQ(stats.currentWPM(), 2);
}

TEST_F(StatsStoreTest, ResetForgetsEverything)
{
    auto stats = storeWithDays({{"2026-11-14", 70}, {"2026-11-15", 60}});
    typeEvenly(stats, 300, 200ms);
    ASSERT_GT(stats.currentWPM(), 0);

    stats.reset();

    EXPECT_EQ(stats.data(), StatsStore::Snapshot());
    EXPECT_EQ(stats.currentWPM(), 0);
    EXPECT_EQ(stats.today(), 0);
    EXPECT_EQ(stats.streak(), 0);
    typeEvenly(stats, 4, 0ms);
    EXPECT_EQ(stats.currentWPM(), 0);
    EXPECT_EQ(stats.total(), 4);
}

TEST_F(StatsStoreTest, EveryKeyNotifiesOfTheData)
{
    auto stats = store();
    const QSignalSpy dataChanged(&stats, &StatsStore::dataChanged);
    const QSignalSpy currentWPMChanged(&stats, &StatsStore::currentWPMChanged);

    stats.record(false);
    stats.record(true);

    EXPECT_EQ(dataChanged.count(), 2);
    EXPECT_EQ(currentWPMChanged.count(), 0);
}

TEST_F(StatsStoreTest, NotifiesOfTheSpeedWhenItIsAnother)
{
    auto stats = store();
    const QSignalSpy currentWPMChanged(&stats, &StatsStore::currentWPMChanged);

    typeEvenly(stats, 9, 100ms);
    EXPECT_EQ(currentWPMChanged.count(), 1);
    stats.reset();
    EXPECT_EQ(currentWPMChanged.count(), 2);
    stats.reset();
    EXPECT_EQ(currentWPMChanged.count(), 2);
}

TEST_F(StatsStoreTest, WhoIsNotifiedMeetsTheNewNumbers)
{
    auto stats = store();
    typeEvenly(stats, 4, 100ms);
    std::vector<std::int64_t> seen;
    QObject::connect(&stats, &StatsStore::dataChanged, &stats, [&] {
        seen.insert(seen.end(), {stats.today(), stats.total(), stats.currentWPM()});
    });

    stats.record(true);
    stats.reset();

    EXPECT_THAT(seen, testing::ElementsAre(5, 5, 1, 0, 0, 0));
}

TEST_F(StatsStoreTest, PropertiesTellWhatTheOperationsDo)
{
    auto stats = storeWithDays({{"2026-11-13", 50}, {"2026-11-14", 51}, {"2026-11-15", 5}});
    typeEvenly(stats, 10, 100ms);

    EXPECT_EQ(stats.property("today").toLongLong(), 15);
    EXPECT_EQ(stats.property("total").toLongLong(), 1'000'010);
    EXPECT_EQ(stats.property("streak").toLongLong(), 2);
    EXPECT_EQ(stats.property("bestWPM").toLongLong(), 40);
    EXPECT_EQ(stats.property("currentWPM").toLongLong(), 2);
    const auto days = stats.property("lastDays").value<QList<StatsStore::Day>>();
    EXPECT_EQ(days, stats.lastDays());
    const auto& day = StatsStore::Day::staticMetaObject;
    EXPECT_EQ(
        day.property(day.indexOfProperty("count")).readOnGadget(&days.constLast()).toLongLong(),
        15);
    EXPECT_EQ(
        day.property(day.indexOfProperty("date")).readOnGadget(&days.constLast()).toDateTime(),
        QDateTime(QDate(2026, 11, 15), QTime(0, 0), QTimeZone::utc()));
}

TEST_F(StatsStoreTest, DemonstrationShowsItsDays)
{
    const StatsStore demo({100, 20, 3}, 72, surroundings());

    EXPECT_EQ(demo.today(), 3);
    EXPECT_EQ(demo.count(now() - 24h), 20);
    EXPECT_EQ(demo.count(now() - 48h), 100);
    EXPECT_EQ(demo.data().daily,
              DailyCounts({{"2026-11-13", 100}, {"2026-11-14", 20}, {"2026-11-15", 3}}));
    EXPECT_EQ(demo.total(), 412503);
    EXPECT_EQ(demo.bestWPM(), 72);
    EXPECT_EQ(demo.currentWPM(), 0);
}

TEST_F(StatsStoreTest, DemonstrationMayHaveNoDays)
{
    const StatsStore demo(std::vector<std::int64_t>(), 0, surroundings());

    EXPECT_EQ(demo.data(), (StatsStore::Snapshot{.daily = {}, .bestWPM = 0, .total = 412380}));
}

} // namespace
} // namespace clavo
