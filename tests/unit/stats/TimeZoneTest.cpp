// SPDX-License-Identifier: MIT
#include "stats/TimeZone.h"

#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

class SystemTimeZoneTest : public testing::Test
{
protected:
    SystemTimeZoneTest() { fs::create_directories(m_link.parent_path()); }
    // The event loop ends after the zone that it served.
    ~SystemTimeZoneTest() override { m_zone.reset(); }

    [[nodiscard]] TimeZone& zone()
    {
        if (!m_zone)
            m_zone = makeSystemTimeZone(m_link);
        return *m_zone;
    }

    /// Replaces the link as administrators' programs do: in one step.
    static void replaceLink(const fs::path& link, const fs::path& target)
    {
        auto next = link;
        next += ".next";
        fs::create_symlink(target, next);
        fs::rename(next, link);
    }

    [[nodiscard]] bool becomes(const char* name)
    {
        return EventLoop::until([&] { return zone().current() == QTimeZone(name); });
    }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    fs::path m_link = m_folder.path() / "etc" / "localtime";

private:
    std::shared_ptr<TimeZone> m_zone;
};

TEST_F(SystemTimeZoneTest, IsTheOneThatTheLinkLeadsTo)
{
    fs::create_symlink("../usr/share/zoneinfo/Asia/Kathmandu", m_link);

    EXPECT_EQ(zone().current(), QTimeZone("Asia/Kathmandu"));
}

TEST_F(SystemTimeZoneTest, FollowsEveryReplacementOfTheLink)
{
    fs::create_symlink("/usr/share/zoneinfo/Europe/Paris", m_link);
    EXPECT_EQ(zone().current(), QTimeZone("Europe/Paris"));

    replaceLink(m_link, "/usr/share/zoneinfo/Pacific/Honolulu");
    EXPECT_TRUE(becomes("Pacific/Honolulu"));
    replaceLink(m_link, "/usr/share/zoneinfo/Asia/Tokyo");
    EXPECT_TRUE(becomes("Asia/Tokyo"));
}

TEST_F(SystemTimeZoneTest, FollowsALinkThatIsRemovedAndMadeAnew)
{
    fs::create_symlink("/usr/share/zoneinfo/Europe/Paris", m_link);
    EXPECT_EQ(zone().current(), QTimeZone("Europe/Paris"));

    fs::remove(m_link);
    fs::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", m_link);

    EXPECT_TRUE(becomes("Asia/Tokyo"));
}

TEST_F(SystemTimeZoneTest, FollowsALinkBehindTheLink)
{
    const auto other = m_folder.path() / "etc" / "writable" / "localtime";
    fs::create_directories(other.parent_path());
    fs::create_symlink("/usr/share/zoneinfo/Europe/Paris", other);
    fs::create_symlink("writable/localtime", m_link);
    EXPECT_EQ(zone().current(), QTimeZone("Europe/Paris"));

    replaceLink(other, "/usr/share/zoneinfo/Asia/Tokyo");

    EXPECT_TRUE(becomes("Asia/Tokyo"));
}

TEST_F(SystemTimeZoneTest, ChangeIsReportedOnceAndOnlyForAnotherZone)
{
    fs::create_symlink("/usr/share/zoneinfo/Europe/Paris", m_link);
    int changes = 0;
    QObject::connect(&zone(), &TimeZone::changed, [&] { ++changes; });

    replaceLink(m_link, "../usr/share/zoneinfo/Europe/Paris");
    fs::create_directory(m_link.parent_path() / "something else");
    replaceLink(m_link, "/usr/share/zoneinfo/Asia/Tokyo");

    EXPECT_TRUE(becomes("Asia/Tokyo"));
    EXPECT_EQ(changes, 1);
}

TEST_F(SystemTimeZoneTest, IsTheOneOfQtWhereTheLinkLeadsToNone)
{
    fs::create_symlink(m_link, m_link);

    EXPECT_EQ(zone().current(), QTimeZone::systemTimeZone());
}

TEST_F(SystemTimeZoneTest, VariableTzOverridesTheLink)
{
    fs::create_symlink("/usr/share/zoneinfo/Europe/Paris", m_link);
    qputenv("TZ", "Asia/Tokyo");

    EXPECT_EQ(zone().current(), QTimeZone("Asia/Tokyo"));

    qunsetenv("TZ");
}

} // namespace
} // namespace clavo
