// SPDX-License-Identifier: MIT
#include "ui/TypingFigures.h"

#include "fakes/SimulatedTime.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class TypingFiguresTest : public testing::Test
{
protected:
    TypingFiguresTest()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        figures->setStats(&*stats);
        QObject::connect(&*figures, &TypingFigures::changed, [this] { ++changes; });
    }
    ~TypingFiguresTest() override { QLocale::setDefault(m_before); }

    void type(int characters)
    {
        for (int i = 0; i < characters; ++i)
            stats->record(true);
    }

    SimulatedTime time;
    SimulatedTime neverPassing; // Nothing is saved.
    std::optional<StatsStore> stats{
        std::in_place, std::vector<std::int64_t>{60, 1234}, 40,
        StatsSurroundings{.wallClock =
                              [this] {
                                  return std::chrono::sys_days(std::chrono::days(20000)) + 12h +
                                         time.now();
                              },
                          .timeZone = std::make_shared<TimeZone>(QTimeZone::utc()),
                          .makeTimer = [this] { return neverPassing.makeTimer(); },
                          .runInBackground = [](const auto&) {}}};
    std::optional<TypingFigures> figures{std::in_place, time.makeTimer()};
    int changes = 0; // Announced ones.

private:
    QLocale m_before;
};

TEST_F(TypingFiguresTest, AreThereFromTheStart)
{
    EXPECT_EQ(figures->today(), "1,234");
    EXPECT_EQ(figures->streak(), "2");
    EXPECT_EQ(figures->bestWPM(), "40");
    EXPECT_EQ(figures->storedBestWPM(), "40");
    EXPECT_EQ(figures->total(), "413,674");
    ASSERT_EQ(figures->days().size(), 14);
    EXPECT_EQ(figures->days().back().count, 1234);
}

TEST_F(TypingFiguresTest, AreWrittenAsTheUsersLocaleWritesThem)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));

    figures->read();

    EXPECT_EQ(figures->today(), "1.234");
    EXPECT_EQ(figures->total(), "413.674");
}

TEST_F(TypingFiguresTest, HoldNoKeyUp)
{
    type(1);

    EXPECT_EQ(changes, 0);
    EXPECT_EQ(figures->today(), "1,234");
}

TEST_F(TypingFiguresTest, FollowAfterAMoment)
{
    type(1);
    time.advance(TypingFigures::delay);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(figures->today(), "1,235");

    type(1);
    time.advance(TypingFigures::delay);
    EXPECT_EQ(figures->today(), "1,236");
}

TEST_F(TypingFiguresTest, FollowManyKeysAtOnce)
{
    type(50);
    EXPECT_EQ(time.waiting(), 1U);
    time.advance(10s);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(figures->today(), "1,284");
}

TEST_F(TypingFiguresTest, AreReadAtOnceWhereThatIsAskedFor)
{
    stats->reset();
    figures->read();

    EXPECT_EQ(figures->today(), "0");
    EXPECT_EQ(figures->total(), "0");
}

TEST_F(TypingFiguresTest, TheBestIsNotBelowTheCurrentSpeed)
{
    type(300);
    time.advance(TypingFigures::delay);

    EXPECT_EQ(stats->bestWPM(), 40);
    EXPECT_EQ(figures->bestWPM(), "60");
    EXPECT_EQ(figures->storedBestWPM(), "40");
}

TEST_F(TypingFiguresTest, MayEndWhileTheyAreToFollow)
{
    type(1);
    figures.reset();

    time.advance(TypingFigures::delay);

    EXPECT_EQ(changes, 0);
}

TEST_F(TypingFiguresTest, SurviveTheStatistics)
{
    type(1);
    stats.reset();

    time.advance(TypingFigures::delay);

    EXPECT_EQ(figures->today(), "");
}

} // namespace
} // namespace clavo
