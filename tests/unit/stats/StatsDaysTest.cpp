// SPDX-License-Identifier: MIT
#include "unit/stats/StatsStoreFixture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;

std::vector<std::int64_t> counts(const QList<StatsStore::Day>& days)
{
    std::vector<std::int64_t> result;
    for (const auto& day : days)
        result.push_back(day.count);
    return result;
}

/// The days before a day, each with a count that qualifies.
DailyCounts daysBefore(QDate day, int number, std::int64_t count = 50)
{
    DailyCounts result;
    for (int back = 1; back <= number; ++back)
        result[DayFormatter::key(day.addDays(-back))] = count;
    return result;
}

using Streak = StatsStoreFixture;

TEST_F(Streak, RunsUpToYesterdayWhileTodayDoesNotQualify)
{
    auto days = daysBefore(QDate(2026, 11, 15), 3);
    days["2026-11-15"] = 49;
    auto stats = storeWithDays(days);
    EXPECT_EQ(stats.streak(), 3);

    stats.record(false);

    EXPECT_EQ(stats.streak(), 4);
}

TEST_F(Streak, IsNotBrokenByATodayWithoutKeys)
{
    EXPECT_EQ(storeWithDays(daysBefore(QDate(2026, 11, 15), 3)).streak(), 3);
}

TEST_F(Streak, IsNoneWhenNeitherTodayNorYesterdayQualifies)
{
    EXPECT_EQ(storeWithDays({{"2026-11-13", 500}, {"2026-11-14", 10}, {"2026-11-15", 49}}).streak(),
              0);
}

TEST_F(Streak, IsOneOnTheFirstDay)
{
    EXPECT_EQ(storeWithDays({{"2026-11-15", 50}}).streak(), 1);
}

TEST_F(Streak, EndsAtADayWithoutEntry)
{
    auto days = daysBefore(QDate(2026, 11, 15), 10);
    days.erase("2026-11-12");

    EXPECT_EQ(storeWithDays(days).streak(), 2);
}

TEST_F(Streak, EndsAtADayWithTooFewKeys)
{
    auto days = daysBefore(QDate(2026, 11, 15), 10);
    days["2026-11-12"] = 49;

    EXPECT_EQ(storeWithDays(days).streak(), 2);
}

TEST_F(Streak, CrossesTheYearsEndAndALeapDay)
{
    setLocalTime("2028-03-05T09:00:00");

    EXPECT_EQ(storeWithDays(daysBefore(QDate(2028, 3, 5), 100)).streak(), 100);
}

TEST_F(Streak, CrossesDaysOfTwentyThreeAndTwentyFiveHours)
{
    setTimeZone("Europe/Paris");
    for (const char* text : {"2026-11-15T00:00:00", "2026-11-15T02:30:00", "2026-11-15T23:59:59"}) {
        setLocalTime(text);
        EXPECT_EQ(storeWithDays(daysBefore(QDate(2026, 11, 15), 300)).streak(), 300) << text;
    }
}

TEST_F(Streak, CanBeAHundredThousandDays)
{
    EXPECT_EQ(storeWithDays(daysBefore(QDate(2026, 11, 15), 100'000)).streak(), 100'000);
}

using LastDays = StatsStoreFixture;

TEST_F(LastDays, AreFourteenWithTodayLast)
{
    const auto days = storeWithDays({{"2026-11-01", 99},
                                     {"2026-11-02", 1},
                                     {"2026-11-10", 2},
                                     {"2026-11-14", 3},
                                     {"2026-11-15", 4},
                                     {"2026-11-16", 99}})
                          .lastDays();

    EXPECT_THAT(counts(days), ElementsAre(1, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0, 3, 4));
    EXPECT_EQ(days.first().date, QDateTime(QDate(2026, 11, 2), QTime(0, 0), QTimeZone::utc()));
    EXPECT_EQ(days.last().date, QDateTime(QDate(2026, 11, 15), QTime(0, 0), QTimeZone::utc()));
}

TEST_F(LastDays, ShowTheNewDayLastAfterMidnight)
{
    setLocalTime("2026-11-15T23:59:59.999");
    auto stats = store();
    stats.record(false);

    time.advance(1ms);
    stats.record(false);
    stats.record(false);

    EXPECT_EQ(stats.today(), 2);
    EXPECT_EQ(stats.data().daily, DailyCounts({{"2026-11-15", 1}, {"2026-11-16", 2}}));
    EXPECT_THAT(counts(stats.lastDays()), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2));
}

TEST_F(LastDays, FollowAChangeOfTheTimeZone)
{
    auto stats = store();
    stats.record(false); // Noon in UTC.
    int changes = 0;
    QObject::connect(&stats, &StatsStore::dataChanged, [&] { ++changes; });

    setTimeZone("Pacific/Kiritimati"); // 14 hours ahead.

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(stats.today(), 0);
    EXPECT_THAT(counts(stats.lastDays()), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0));
}

TEST_F(LastDays, CrossTheYearsEndAndALeapDay)
{
    setLocalTime("2028-03-01T12:00:00");
    EXPECT_THAT(
        counts(storeWithDays({{"2028-02-17", 1}, {"2028-02-29", 2}, {"2028-03-01", 3}}).lastDays()),
        ElementsAre(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3));

    setLocalTime("2027-01-01T00:00:00");
    EXPECT_THAT(
        counts(storeWithDays({{"2026-12-19", 1}, {"2026-12-31", 2}, {"2027-01-01", 3}}).lastDays()),
        ElementsAre(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3));
}

TEST_F(LastDays, StartAtMidnightOnDaysOfTwentyThreeAndTwentyFiveHours)
{
    setTimeZone("Europe/Paris");
    for (const auto& [text, last] : {std::pair{"2026-03-31T00:30:00", QDate(2026, 3, 31)},
                                     std::pair{"2026-10-27T23:30:00", QDate(2026, 10, 27)}}) {
        setLocalTime(text);
        const auto days = storeWithDays(daysBefore(last.addDays(1), 14, 7)).lastDays();

        EXPECT_EQ(counts(days), std::vector<std::int64_t>(14, 7)) << text;
        for (int i = 0; i < 14; ++i) {
            EXPECT_EQ(days[i].date.date(), last.addDays(i - 13)) << text;
            EXPECT_EQ(days[i].date.time(), QTime(0, 0)) << text;
        }
    }
}

TEST_F(LastDays, ShowADayThatBeginsAtOne)
{
    setTimeZone("America/Sao_Paulo");
    setLocalTime("2018-11-05T12:00:00");

    const auto days = storeWithDays(daysBefore(QDate(2018, 11, 6), 14, 7)).lastDays();

    EXPECT_EQ(counts(days), std::vector<std::int64_t>(14, 7));
    EXPECT_EQ(days[12].date.date(), QDate(2018, 11, 4));
    EXPECT_EQ(days[12].date.time(), QTime(1, 0));
}

TEST_F(LastDays, AreThoseOfTheTimeZone)
{
    for (const char* zone : {"Pacific/Kiritimati", "Etc/GMT+12", "Asia/Kathmandu"}) {
        setTimeZone(zone);
        setLocalTime("2026-11-15T23:59:59");
        EXPECT_EQ(storeWithDays({{"2026-11-15", 4}}).lastDays().last().count, 4) << zone;

        setLocalTime("2026-11-16T00:00:00");
        const auto days = storeWithDays({{"2026-11-15", 4}}).lastDays();
        EXPECT_EQ(days[12].count, 4) << zone;
        EXPECT_EQ(days[13].count, 0) << zone;
    }
}

using DayOfAKey = StatsStoreFixture;

TEST_F(DayOfAKey, IsTheLocalOneWhenTheClockIsPutForwardAndBack)
{
    setTimeZone("Europe/Paris");
    auto stats = store();
    for (const char* start : {"2026-03-28T23:30:00", "2026-10-24T23:30:00"}) {
        setLocalTime(start);
        for (int halfHour = 0; halfHour < 52; ++halfHour) {
            stats.record(false);
            time.advance(30min);
        }
    }

    EXPECT_EQ(stats.data().daily, DailyCounts({{"2026-03-28", 1},
                                               {"2026-03-29", 46},
                                               {"2026-03-30", 5},
                                               {"2026-10-24", 1},
                                               {"2026-10-25", 50},
                                               {"2026-10-26", 1}}));
}

TEST_F(DayOfAKey, IsTheEarlierOneAgainWhenTheClockIsSetBack)
{
    auto stats = store();
    type(stats, 3);
    setLocalTime("2026-11-14T12:00:00");
    type(stats, 2);
    setLocalTime("2026-11-15T12:00:00");
    type(stats, 1);

    EXPECT_EQ(stats.data().daily, DailyCounts({{"2026-11-14", 2}, {"2026-11-15", 4}}));
    EXPECT_EQ(stats.total(), 6);
}

} // namespace
} // namespace clavo
