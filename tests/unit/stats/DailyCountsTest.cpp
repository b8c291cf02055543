// SPDX-License-Identifier: MIT
#include "stats/DailyCounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(DailyCounts, StartWithoutDays)
{
    const DailyCounts counts;

    EXPECT_EQ(counts.count("2026-11-15"), 0);
    EXPECT_THAT(counts.entries(), IsEmpty());
}

TEST(DailyCounts, EveryKeyIsOneMoreOnItsDay)
{
    DailyCounts counts;

    counts.increment("2026-11-15");
    counts.increment("2026-11-15");
    counts.increment("2026-11-16");

    EXPECT_THAT(counts.entries(), ElementsAre(Pair("2026-11-15", 2), Pair("2026-11-16", 1)));
    EXPECT_EQ(counts.count("2026-11-15"), 2);
    EXPECT_EQ(counts.count("2026-11-16"), 1);
    EXPECT_EQ(counts.count("2026-11-17"), 0);
}

TEST(DailyCounts, KnownDayIsCountedOn)
{
    DailyCounts counts({{"2026-11-14", 7}, {"2026-11-15", 5}});

    counts.increment("2026-11-15");

    EXPECT_THAT(counts.entries(), ElementsAre(Pair("2026-11-14", 7), Pair("2026-11-15", 6)));
}

TEST(DailyCounts, EarlierDayIsCountedOnWhenTheClockIsSetBack)
{
    DailyCounts counts;
    counts.increment("2026-11-15");
    counts.increment("2026-11-16");

    counts.increment("2026-11-15");
    counts.increment("2026-11-14");
    counts.increment("2026-11-16");

    EXPECT_THAT(counts.entries(),
                ElementsAre(Pair("2026-11-14", 1), Pair("2026-11-15", 2), Pair("2026-11-16", 2)));
}

TEST(DailyCounts, CopyKeepsWhatItHeld)
{
    DailyCounts counts({{"2026-11-14", 7}});
    counts.increment("2026-11-15");

    const auto copy = counts;
    counts.increment("2026-11-15");
    counts.increment("2026-11-16");
    counts.increment("2026-11-14");

    EXPECT_THAT(copy.entries(), ElementsAre(Pair("2026-11-14", 7), Pair("2026-11-15", 1)));
}

TEST(DailyCounts, AreEqualHoweverTheyCameAbout)
{
    DailyCounts typed;
    typed.increment("2026-11-16");
    typed.increment("2026-11-15");
    typed.increment("2026-11-16");

    EXPECT_EQ(typed, DailyCounts({{"2026-11-15", 1}, {"2026-11-16", 2}}));
    EXPECT_NE(typed, DailyCounts({{"2026-11-15", 1}, {"2026-11-16", 3}}));
    EXPECT_NE(typed, DailyCounts({{"2026-11-16", 2}}));
}

} // namespace
} // namespace clavo
