// SPDX-License-Identifier: MIT
#include "stats/SnapshotFile.h"

#include "fakes/TemporaryFolder.h"
#include "files/WholeFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <QDate>

#include <fstream>
#include <limits>
#include <map>

namespace clavo
{
namespace
{

using testing::Eq;
using testing::Optional;

StatsSnapshot twoDays()
{
    return {.daily = {{"2026-11-15", 52}, {"2026-11-14", 1000}}, .bestWPM = 87, .total = 412432};
}

constexpr auto twoDaysText =
    R"({"bestWPM":87,"daily":{"2026-11-14":1000,"2026-11-15":52},"total":412432})";

TEST(SnapshotJson, IsCompact)
{
    EXPECT_EQ(toJson(twoDays()), twoDaysText);
}

TEST(SnapshotJson, OfEmptyStatisticsHasAllMembers)
{
    EXPECT_EQ(toJson({}), R"({"bestWPM":0,"daily":{},"total":0})");
}

TEST(SnapshotJson, ReadsBackAsItWas)
{
    EXPECT_THAT(parseSnapshot(twoDaysText), Optional(twoDays()));
    EXPECT_THAT(parseSnapshot(exportJson(twoDays())), Optional(twoDays()));
    EXPECT_THAT(parseSnapshot(toJson({})), Optional(StatsSnapshot()));
}

TEST(SnapshotJson, ForPeopleHasSortedMembersOneALine)
{
    EXPECT_EQ(exportJson(twoDays()), "{\n"
                                     "    \"bestWPM\": 87,\n"
                                     "    \"daily\": {\n"
                                     "        \"2026-11-14\": 1000,\n"
                                     "        \"2026-11-15\": 52\n"
                                     "    },\n"
                                     "    \"total\": 412432\n"
                                     "}\n");
}

TEST(SnapshotJson, OrderAndWhitespaceDoNotMatter)
{
    EXPECT_THAT(parseSnapshot(" {\n\t\"total\": 412432, \"daily\": {\"2026-11-15\": 52,\n"
                              "\"2026-11-14\": 1000}, \"bestWPM\": 87 }\r\n"),
                Optional(twoDays()));
}

TEST(SnapshotJson, UnknownMembersArePassedOver)
{
    EXPECT_THAT(
        parseSnapshot(
            R"({"version":2.5,"daily":{},"x":{"deep":[{"er":[null,{}]}]},"bestWPM":1,"y":[],"total":2})"),
        Optional(StatsSnapshot{.daily = {}, .bestWPM = 1, .total = 2}));
}

TEST(SnapshotJson, UnknownMemberMayBeAsDeepAsItLikes)
{
    constexpr std::size_t depth = 1'000'000;
    const auto text = R"({"bestWPM":1,"daily":{},"total":2,"x":)" + std::string(depth, '[') +
                      std::string(depth, ']') + "}";

    EXPECT_THAT(parseSnapshot(text),
                Optional(StatsSnapshot{.daily = {}, .bestWPM = 1, .total = 2}));
}

TEST(SnapshotJson, GreatestAndLeastIntegersAreRead)
{
    EXPECT_THAT(
        parseSnapshot(
            R"({"bestWPM":-9223372036854775808,"daily":{"2026-11-15":-1},"total":9223372036854775807})"),
        Optional(StatsSnapshot{.daily = {{"2026-11-15", -1}},
                               .bestWPM = std::numeric_limits<std::int64_t>::min(),
                               .total = std::numeric_limits<std::int64_t>::max()}));
}

class BrokenStats : public testing::TestWithParam<const char*>
{
};

TEST_P(BrokenStats, AreNone)
{
    EXPECT_THAT(parseSnapshot(GetParam()), Eq(std::nullopt));
}

INSTANTIATE_TEST_SUITE_P(NoObject, BrokenStats,
                         testing::Values("", " ", "null", "true", "7", "\"text\"", "[]", "[{}]",
                                         "no JSON at all", "{", "}", "\xff\xfe{"));

INSTANTIATE_TEST_SUITE_P(MissingMember, BrokenStats,
                         testing::Values("{}", R"({"daily":{},"bestWPM":1})",
                                         R"({"daily":{},"total":2})", R"({"bestWPM":1,"total":2})",
                                         R"({"Daily":{},"bestWPM":1,"total":2})"));

INSTANTIATE_TEST_SUITE_P(WrongType, BrokenStats,
                         testing::Values(R"({"daily":null,"bestWPM":1,"total":2})",
                                         R"({"daily":[],"bestWPM":1,"total":2})",
                                         R"({"daily":[["2026-11-15",3]],"bestWPM":1,"total":2})",
                                         R"({"daily":3,"bestWPM":1,"total":2})",
                                         R"({"daily":"","bestWPM":1,"total":2})",
                                         R"({"daily":{},"bestWPM":null,"total":2})",
                                         R"({"daily":{},"bestWPM":"1","total":2})",
                                         R"({"daily":{},"bestWPM":[1],"total":2})",
                                         R"({"daily":{},"bestWPM":{"a":{"b":1}},"total":2})",
                                         R"({"daily":{},"bestWPM":1,"total":true})",
                                         R"({"daily":{},"bestWPM":1,"total":{}})"));

INSTANTIATE_TEST_SUITE_P(WrongTypeOfADay, BrokenStats,
                         testing::Values(R"({"daily":{"2026-11-15":null},"bestWPM":1,"total":2})",
                                         R"({"daily":{"2026-11-15":"3"},"bestWPM":1,"total":2})",
                                         R"({"daily":{"2026-11-15":[3]},"bestWPM":1,"total":2})",
                                         R"({"daily":{"2026-11-15":[[[]]]},"bestWPM":1,"total":2})",
                                         R"({"daily":{"2026-11-15":{}},"bestWPM":1,"total":2})",
                                         R"({"daily":{"2026-11-15":1.5},"bestWPM":1,"total":2})"));

INSTANTIATE_TEST_SUITE_P(
    NumberThatIsNoInteger, BrokenStats,
    testing::Values(R"({"daily":{},"bestWPM":1.5,"total":2})",
                    R"({"daily":{},"bestWPM":1.0,"total":2})",
                    R"({"daily":{},"bestWPM":1,"total":2e3})",
                    R"({"daily":{},"bestWPM":1,"total":9223372036854775808})",
                    R"({"daily":{},"bestWPM":1,"total":-9223372036854775809})",
                    R"({"daily":{},"bestWPM":1,"total":18446744073709551616})",
                    R"({"daily":{},"bestWPM":1,"total":1e400})",
                    R"({"daily":{"2026-11-15":9223372036854775808},"bestWPM":1,"total":2})",
                    R"({"daily":{},"bestWPM":NaN,"total":2})",
                    R"({"daily":{},"bestWPM":0x1,"total":2})"));

INSTANTIATE_TEST_SUITE_P(NoJson, BrokenStats,
                         testing::Values(R"({"daily":{},"bestWPM":1,"total":2}})",
                                         R"({"daily":{},"bestWPM":1,"total":2} x)",
                                         R"({"daily":{},"bestWPM":1,"total":2,})",
                                         R"({"daily":{},bestWPM:1,"total":2})",
                                         R"({'daily':{},"bestWPM":1,"total":2})",
                                         "{\"daily\":{\"\xff\":1},\"bestWPM\":1,\"total\":2}"));

TEST(SnapshotJson, CutOffAnywhereIsNone)
{
    const auto whole = toJson(twoDays());

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(parseSnapshot(std::string_view(whole).substr(0, length)), Eq(std::nullopt))
            << length;
}

class SnapshotFile : public testing::Test
{
protected:
    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder.path() / "stats.json";
};

TEST_F(SnapshotFile, IsLoadedAsItWasSaved)
{
    EXPECT_TRUE(saveSnapshot(twoDays(), m_file));

    EXPECT_EQ(loadSnapshot(m_file), twoDays());
}

TEST_F(SnapshotFile, HoldsAHundredThousandDays)
{
    std::map<std::string, std::int64_t> counts;
    for (int day = 0; day < 100'000; ++day)
        counts[QDate(2026, 11, 15).addDays(-day).toString(Qt::ISODate).toStdString()] = 9000 + day;
    ASSERT_EQ(counts.size(), 100'000U);
    const StatsSnapshot snapshot{.daily = counts, .bestWPM = 1, .total = 2};

    EXPECT_TRUE(saveSnapshot(snapshot, m_file));

    EXPECT_EQ(loadSnapshot(m_file), snapshot);
}

TEST_F(SnapshotFile, MissingOneIsEmpty)
{
    EXPECT_EQ(loadSnapshot(m_file), StatsSnapshot());
    EXPECT_EQ(loadSnapshot(m_folder.path() / "missing" / "stats.json"), StatsSnapshot());
}

TEST_F(SnapshotFile, FolderInItsPlaceIsEmptyAndGivesWay)
{
    std::filesystem::create_directory(m_file);

    EXPECT_EQ(loadSnapshot(m_file), StatsSnapshot());
    EXPECT_TRUE(saveSnapshot(twoDays(), m_file));
    EXPECT_EQ(loadSnapshot(m_file), twoDays());
}

TEST_F(SnapshotFile, PipeInItsPlaceIsEmptyAndGivesWay)
{
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    EXPECT_EQ(loadSnapshot(m_file), StatsSnapshot());
    EXPECT_TRUE(saveSnapshot(twoDays(), m_file));
    EXPECT_EQ(loadSnapshot(m_file), twoDays());
}

TEST_F(SnapshotFile, OfAHundredMegabytesIsEmptyAndGivesWay)
{
    std::ofstream(m_file) << twoDaysText;
    std::filesystem::resize_file(m_file, 100'000'000);

    EXPECT_EQ(loadSnapshot(m_file), StatsSnapshot());
    EXPECT_TRUE(saveSnapshot(twoDays(), m_file));
    EXPECT_EQ(loadSnapshot(m_file), twoDays());
}

TEST_F(SnapshotFile, ExportHoldsTheTextForPeople)
{
    const auto file = m_folder.path() / exportFileName;

    EXPECT_TRUE(exportSnapshot(twoDays(), file));

    EXPECT_THAT(readRegularFile(file, 1 << 20), Optional(exportJson(twoDays())));
    EXPECT_EQ(file.filename(), "clavo-stats.json");
}

TEST_F(SnapshotFile, ExportReplacesAnEarlierOne)
{
    ASSERT_FALSE(replaceFile(m_file, std::string(10'000, 'x')));

    EXPECT_TRUE(exportSnapshot({}, m_file));

    EXPECT_THAT(readRegularFile(m_file, 1 << 20), Optional(exportJson({})));
}

TEST_F(SnapshotFile, ExportIsWrittenInPlace)
{
    const auto link = m_folder.path() / "link.json";
    std::filesystem::create_symlink(m_file, link);

    EXPECT_TRUE(exportSnapshot(twoDays(), link));

    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_THAT(readRegularFile(m_file, 1 << 20), Optional(exportJson(twoDays())));
}

TEST_F(SnapshotFile, ExportThatFailsSaysSo)
{
    EXPECT_FALSE(exportSnapshot(twoDays(), m_folder.path() / "missing" / exportFileName));
}

} // namespace
} // namespace clavo
