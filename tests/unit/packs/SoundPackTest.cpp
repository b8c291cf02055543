// SPDX-License-Identifier: MIT
#include "packs/SoundPack.h"

#include "fakes/TemporaryFolder.h"
#include "log/Log.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <iostream>
#include <limits>
#include <unistd.h>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class SoundPackTest : public testing::Test
{
protected:
    void write(std::string_view manifest) { writeFile(m_manifest, manifest); }
    [[nodiscard]] std::optional<SoundPack> loaded(bool isCustom = false) const
    {
        return SoundPack::load(m_folder, isCustom);
    }

    TemporaryFolder m_temporary;
    fs::path m_folder = m_temporary.path() / "päck ☃";
    fs::path m_manifest = m_folder / "pack.json";
};

TEST_F(SoundPackTest, HoldsWhatTheManifestSays)
{
    write(manifestText(R"("30": "a", "57": "space/bar")", R"("30": "up")", "red", "Röd"));

    const auto pack = loaded();

    ASSERT_TRUE(pack);
    EXPECT_EQ(pack->id, "red");
    EXPECT_EQ(pack->name, "Röd");
    EXPECT_EQ(pack->detail, "detail");
    EXPECT_EQ(pack->category, PackCategory::linear);
    EXPECT_EQ(pack->credit, "credit");
    EXPECT_EQ(pack->folder, m_folder);
    EXPECT_THAT(pack->press, ElementsAre(Pair(30, "a"), Pair(57, "space/bar")));
    EXPECT_THAT(pack->release, ElementsAre(Pair(30, "up")));
}

TEST_F(SoundPackTest, NeedsNoSounds)
{
    write(manifestText());

    const auto pack = loaded();

    ASSERT_TRUE(pack);
    EXPECT_THAT(pack->press, IsEmpty());
    EXPECT_THAT(pack->release, IsEmpty());
}

TEST_F(SoundPackTest, PackOfTheUserIsAnotherPackOfTheCustomCategory)
{
    write(manifestText("", "", "red", "name", "tactile"));

    const auto builtIn = loaded(false);
    const auto custom = loaded(true);

    ASSERT_TRUE(builtIn && custom);
    EXPECT_EQ(builtIn->id, "red");
    EXPECT_EQ(builtIn->category, PackCategory::tactile);
    EXPECT_EQ(custom->id, "custom:red");
    EXPECT_EQ(custom->category, PackCategory::custom);
    EXPECT_NE(*builtIn, *custom);
}

TEST_F(SoundPackTest, UnknownCategoryOfABuiltInPackIsSpecial)
{
    write(manifestText("", "", "id", "name", "Tactile"));
    EXPECT_EQ(loaded()->category, PackCategory::special);

    write(manifestText("", "", "id", "name", "custom"));
    EXPECT_EQ(loaded()->category, PackCategory::custom);
}

TEST_F(SoundPackTest, TextsToShowAreCutAndWithoutControlCharacters)
{
    std::string snow;
    for (int i = 0; i < 200; ++i)
        snow += "☃";
    write(R"({"id": "a\u001b[2J", "name": "\u001b]0;owned\u0007\u202e", "detail": ")" + snow +
          R"(☃", "category": "", "credit": "one\ntwo", "press": {}, "release": {}})");

    const auto pack = loaded(true);

    ASSERT_TRUE(pack);
    EXPECT_EQ(pack->name, "\ufffd]0;owned\ufffd\ufffd");
    EXPECT_EQ(pack->detail, snow);
    EXPECT_EQ(pack->credit, "one\ufffdtwo");
    EXPECT_EQ(pack->id, "custom:a\x1b[2J") << "another id is another pack";
}

TEST_F(SoundPackTest, PacksAreEqualWhenTheirIdsAre)
{
    SoundPack pack;
    pack.id = "red";
    pack.name = "one";
    SoundPack same;
    same.id = "red";
    same.name = "two";
    SoundPack other = pack;
    other.id = "blue";

    EXPECT_EQ(pack, same);
    EXPECT_NE(pack, other);
}

TEST_F(SoundPackTest, ScancodesAreDecimalNumbersWithAnOptionalSign)
{
    write(manifestText(R"("30": "a", "abc": "b", "": "c", "-2": "d", "+41": "e", "0057": "f")",
                       R"("-": "a", "+": "b", " 1": "c", "1 ": "d", "0x1F": "e", "1.0": "f",
                          "+-1": "g", "--1": "h", "-+1": "i", "1e3": "j", "٣": "k", "1\u0000": "l"
                         )"));

    const auto pack = loaded();

    ASSERT_TRUE(pack);
    EXPECT_THAT(pack->press,
                ElementsAre(Pair(-2, "d"), Pair(30, "a"), Pair(41, "e"), Pair(57, "f")));
    EXPECT_THAT(pack->release, IsEmpty());
}

TEST_F(SoundPackTest, ScancodesHave64Bits)
{
    write(manifestText(R"("9223372036854775807": "a", "-9223372036854775808": "b",
                          "9223372036854775808": "c", "-9223372036854775809": "d",
                          "99999999999999999999999999": "e")"));

    const auto pack = loaded();

    ASSERT_TRUE(pack);
    EXPECT_THAT(pack->press, ElementsAre(Pair(std::numeric_limits<std::int64_t>::min(), "b"),
                                         Pair(std::numeric_limits<std::int64_t>::max(), "a")));
}

TEST_F(SoundPackTest, OneNumberInBothMapsIsTwoSounds)
{
    write(manifestText(R"("30": "a")", R"("030": "b")"));

    EXPECT_TRUE(loaded());
}

TEST_F(SoundPackTest, DescriptionHasNoSoundsAndStopsNoProgram)
{
    write(manifestText(R"("30": "a", "030": "b")", R"("30": "a")", "red", "Röd"));

    const auto pack = SoundPack::load(m_folder, true, SoundPack::Part::description);

    ASSERT_TRUE(pack);
    EXPECT_EQ(pack->id, "custom:red");
    EXPECT_EQ(pack->name, "Röd");
    EXPECT_THAT(pack->press, IsEmpty());
    EXPECT_THAT(pack->release, IsEmpty());
}

using SoundPackDeathTest = SoundPackTest;

TEST_F(SoundPackDeathTest, OneNumberWrittenTwiceStopsTheProgram)
{
    write(manifestText(R"("30": "a", "030": "b")"));
    EXPECT_DEATH((void)loaded(), "Duplicate values for key: '30'\n");

    write(manifestText("", R"("-0": "a", "+0": "b")"));
    EXPECT_DEATH((void)loaded(), "Duplicate values for key: '0'\n");
}

TEST_F(SoundPackDeathTest, FolderOfThePackThatStopsTheProgramIsLoggedFirst)
{
    write(manifestText(R"("30": "a", "+30": "b")"));
    const auto loadWithAJournal = [this] {
        log::setSink([](log::Level level, std::string_view line) {
            std::cerr << "journal " << (level == log::Level::error) << ": " << line << '\n';
        });
        (void)loaded();
    };

    const auto line =
        "pack du dossier " + m_folder.native() + " : le code de touche 30 y est deux fois\n";
    const auto end = "clavo: fatal error: Duplicate values for key: '30'\n";
    EXPECT_DEATH((void)loaded(), HasSubstr("clavo: " + line + end)) << "without a journal";
    EXPECT_DEATH(loadWithAJournal(), HasSubstr("journal 1: " + line + "clavo: " + line + end));
}

TEST_F(SoundPackTest, FolderWithoutAManifestIsNoPack)
{
    EXPECT_FALSE(loaded());
    fs::create_directories(m_folder);
    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, FileIsNoPack)
{
    writeFile(m_folder, manifestText());

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, EmptyManifestIsNoPack)
{
    write("");

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, BrokenManifestIsNoPackEvenWithDuplicateKeys)
{
    write(manifestText(R"("30": "a", "030": "b")") + "x");

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, ManifestThatIsAFolderIsNoPack)
{
    fs::create_directories(m_manifest);

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, ManifestThatCannotBeReadIsNoPack)
{
    fs::create_directories(m_folder);
    fs::create_symlink("pack.json", m_manifest); // Leads to itself: unreadable for everybody.
    EXPECT_FALSE(loaded());

    fs::remove(m_manifest);
    write(manifestText());
    fs::permissions(m_manifest, fs::perms::none);
    EXPECT_EQ(loaded().has_value(), ::geteuid() == 0); // The superuser reads everything.
}

TEST_F(SoundPackTest, ManifestBehindALinkIsRead)
{
    writeFile(m_temporary.path() / "elsewhere.json", manifestText());
    fs::create_directories(m_folder);
    fs::create_symlink("../elsewhere.json", m_manifest);

    EXPECT_TRUE(loaded());
}

TEST_F(SoundPackTest, PipeIsNoManifestAndDoesNotHangTheProgram)
{
    fs::create_directories(m_folder);
    ASSERT_EQ(::mkfifo(m_manifest.c_str(), 0600), 0);

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, DeviceIsNoManifest)
{
    fs::create_directories(m_folder);
    fs::create_symlink("/dev/zero", m_manifest);

    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, ManifestOfAMebibyteIsReadAndALargerOneIsNot)
{
    const auto json = manifestText();
    write(json + std::string((1U << 20U) - json.size(), ' '));
    EXPECT_TRUE(loaded());

    write(json + std::string((1U << 20U) - json.size() + 1, ' '));
    EXPECT_FALSE(loaded());
}

TEST_F(SoundPackTest, ManifestOf100MegabytesIsNoPack)
{
    write(manifestText());
    fs::resize_file(m_manifest, 100000000);

    EXPECT_FALSE(loaded());
}

} // namespace
} // namespace clavo
