// SPDX-License-Identifier: MIT
#include "stats/DayFormatter.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <ostream>

namespace clavo
{
namespace
{

DayFormatter::Moment moment(const char* utc)
{
    const auto time = QDateTime::fromString(QString(utc) + "Z", Qt::ISODateWithMs);
    EXPECT_TRUE(time.isValid()) << utc;
    return DayFormatter::Moment(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

struct Case {
    const char* zone;
    const char* utc;
    const char* key;

    friend std::ostream& operator<<(std::ostream& out, const Case& c)
    {
        return out << c.zone << ' ' << c.utc;
    }
};

class DayKey : public testing::TestWithParam<Case>
{
};

TEST_P(DayKey, IsTheLocalDayOfTheMoment)
{
    const QTimeZone zone(GetParam().zone);
    ASSERT_TRUE(zone.isValid());
    DayFormatter formatter(zone);

    EXPECT_EQ(formatter.key(moment(GetParam().utc)), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(Midnight, DayKey,
                         testing::Values(Case{"UTC", "2026-11-15T23:59:59.999", "2026-11-15"},
                                         Case{"UTC", "2026-11-16T00:00:00.000", "2026-11-16"}));

INSTANTIATE_TEST_SUITE_P(
    EastAndWest, DayKey,
    testing::Values(Case{"Pacific/Kiritimati", "2026-11-15T09:59:59", "2026-11-15"}, // +14:00
                    Case{"Pacific/Kiritimati", "2026-11-15T10:00:00", "2026-11-16"}, //
                    Case{"Etc/GMT+12", "2026-11-16T11:59:59", "2026-11-15"},         // −12:00
                    Case{"Etc/GMT+12", "2026-11-16T12:00:00", "2026-11-16"},         //
                    Case{"Asia/Kolkata", "2026-11-15T18:29:59", "2026-11-15"},       // +05:30
                    Case{"Asia/Kolkata", "2026-11-15T18:30:00", "2026-11-16"},       //
                    Case{"Asia/Kathmandu", "2026-11-15T18:14:59", "2026-11-15"},     // +05:45
                    Case{"Asia/Kathmandu", "2026-11-15T18:15:00", "2026-11-16"},     //
                    Case{"America/St_Johns", "2026-11-16T03:29:59", "2026-11-15"},   // −03:30
                    Case{"America/St_Johns", "2026-11-16T03:30:00", "2026-11-16"}));

INSTANTIATE_TEST_SUITE_P(
    DaylightSaving, DayKey,
    testing::Values(Case{"Europe/Paris", "2026-03-28T22:59:59", "2026-03-28"}, // 23 hours long:
                    Case{"Europe/Paris", "2026-03-28T23:00:00", "2026-03-29"},
                    Case{"Europe/Paris", "2026-03-29T21:59:59", "2026-03-29"},
                    Case{"Europe/Paris", "2026-03-29T22:00:00", "2026-03-30"},
                    Case{"Europe/Paris", "2026-10-24T21:59:59", "2026-10-24"}, // 25 hours long:
                    Case{"Europe/Paris", "2026-10-24T22:00:00", "2026-10-25"},
                    Case{"Europe/Paris", "2026-10-25T22:59:59", "2026-10-25"},
                    Case{"Europe/Paris", "2026-10-25T23:00:00", "2026-10-26"},
                    // Begins at one o'clock:
                    Case{"America/Sao_Paulo", "2018-11-04T02:59:59", "2018-11-03"},
                    Case{"America/Sao_Paulo", "2018-11-04T03:00:00", "2018-11-04"},
                    // Begins, is taken back after a minute and begins again:
                    Case{"America/St_Johns", "2010-11-07T02:29:59", "2010-11-06"},
                    Case{"America/St_Johns", "2010-11-07T02:30:00", "2010-11-07"},
                    Case{"America/St_Johns", "2010-11-07T02:31:00", "2010-11-06"},
                    Case{"America/St_Johns", "2010-11-07T03:30:00", "2010-11-07"}));

INSTANTIATE_TEST_SUITE_P(Calendar, DayKey,
                         testing::Values(Case{"UTC", "2028-02-29T12:00:00", "2028-02-29"},
                                         Case{"UTC", "2028-03-01T00:00:00", "2028-03-01"},
                                         Case{"UTC", "2027-03-01T00:00:00", "2027-03-01"},
                                         Case{"UTC", "2100-02-28T23:59:59", "2100-02-28"},
                                         Case{"UTC", "2100-03-01T00:00:00", "2100-03-01"},
                                         Case{"UTC", "2026-12-31T23:59:59", "2026-12-31"},
                                         Case{"UTC", "2027-01-01T00:00:00", "2027-01-01"},
                                         // The year of the week would be another one:
                                         Case{"UTC", "2027-01-03T12:00:00", "2027-01-03"},
                                         Case{"UTC", "2029-12-31T12:00:00", "2029-12-31"},
                                         Case{"UTC", "1969-12-31T23:59:59.999", "1969-12-31"}));

TEST(DayFormatter, FollowsTheMomentsInEveryDirection)
{
    DayFormatter formatter(QTimeZone::utc());

    EXPECT_EQ(formatter.key(moment("2026-11-15T12:00:00")), "2026-11-15");
    EXPECT_EQ(formatter.key(moment("2026-11-15T12:00:01")), "2026-11-15");
    EXPECT_EQ(formatter.key(moment("2026-11-16T00:00:00")), "2026-11-16");
    EXPECT_EQ(formatter.key(moment("2026-11-15T23:59:59")), "2026-11-15");
    EXPECT_EQ(formatter.key(moment("2020-01-01T00:00:00")), "2020-01-01");
}

TEST(DayFormatter, KeyDoesNotDependOnTheMomentsBeforeIt)
{
    const QTimeZone zone("America/St_Johns");
    ASSERT_TRUE(zone.isValid());
    DayFormatter formatter(zone);
    // The day begins, is taken back after a minute and begins again.
    const auto start = moment("2010-11-07T02:29:00");
    const auto end = moment("2010-11-07T03:31:00");

    for (auto forth = start; forth < end; forth += std::chrono::seconds(10)) {
        const auto back = start + (end - forth);
        for (const auto each : {forth, back}) {
            EXPECT_EQ(formatter.key(each), DayFormatter::key(formatter.day(each)))
                << each.time_since_epoch().count();
        }
    }
}

TEST(DayFormatter, WritesAsciiDigitsWhateverTheLocale)
{
    const QLocale previous;
    QLocale::setDefault(QLocale("ar_EG"));
    DayFormatter formatter(QTimeZone::utc());

    EXPECT_EQ(formatter.key(moment("2026-11-15T12:00:00")), "2026-11-15");

    QLocale::setDefault(previous);
}

TEST(DayFormatter, FillsUpWithZeros)
{
    EXPECT_EQ(DayFormatter::key(QDate(987, 6, 5)), "0987-06-05");
}

TEST(DayFormatter, DayStartsAtMidnight)
{
    const QTimeZone zone("Asia/Kathmandu");
    const DayFormatter formatter(zone);

    EXPECT_EQ(formatter.start(QDate(2026, 11, 15)),
              QDateTime(QDate(2026, 11, 15), QTime(0, 0), zone));
}

TEST(DayFormatter, DayWithoutMidnightStartsAfterTheLeap)
{
    const QTimeZone zone("America/Sao_Paulo");
    const DayFormatter formatter(zone);

    EXPECT_EQ(formatter.start(QDate(2018, 11, 4)),
              QDateTime(QDate(2018, 11, 4), QTime(1, 0), zone));
}

TEST(DayFormatter, ZoneThatIsNotValidCountsAsUtc)
{
    DayFormatter formatter(QTimeZone("Nowhere/AtAll"));

    EXPECT_EQ(formatter.key(moment("2026-11-15T23:59:59")), "2026-11-15");
    EXPECT_EQ(formatter.key(moment("2026-11-16T00:00:00")), "2026-11-16");
}

} // namespace
} // namespace clavo
