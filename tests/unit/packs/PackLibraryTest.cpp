// SPDX-License-Identifier: MIT
#include "packs/PackLibrary.h"

#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <limits>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr AudioFormat mono44100;

class PackLibraryTest : public testing::Test
{
protected:
    PackLibraryTest() { m_pack.folder = m_temporary.path() / "päck"; }

    /// A pack in one of the two folders.
    void addPack(const fs::path& folder, std::string_view name,
                 std::string_view category = "linear")
    {
        writeFile(folder / ("folder of " + std::string(name)) / "pack.json",
                  manifestText("", "", "id of " + std::string(name), name, category));
    }
    void addSound(std::string_view name, const std::vector<double>& samples,
                  const FileFormat& format = {})
    {
        writeSound(m_pack.folder.string() + "/sounds/" + std::string(name) + ".wav", samples,
                   format);
    }
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const SoundPack& pack : PackLibrary::allPacks({m_builtIn, m_custom}))
            found.push_back(pack.name);
        return found;
    }
    [[nodiscard]] SoundBank bank(const std::set<std::int64_t>* only = nullptr) const
    {
        return PackLibrary::makeBank(m_pack, mono44100, only);
    }
    [[nodiscard]] fs::path sound(const std::string& name) const
    {
        return m_pack.folder / "sounds" / (name + ".wav");
    }
    /// Files of their own, each with the longest sound that loads.
    void addLongSounds(const std::vector<std::string>& names) const
    {
        writeLongSound(sound(names.front()));
        for (std::size_t i = 1; i < names.size(); ++i)
            fs::copy_file(sound(names.front()), sound(names[i]));
    }
    /// What the samples of all sounds take together.
    static std::size_t sizeOf(const SoundBank& bank)
    {
        std::set<AudioBufferPtr> sounds;
        for (const auto* const direction : {&bank.press, &bank.release}) {
            for (const auto& [scancode, variants] : *direction)
                sounds.insert(variants.begin(), variants.end());
        }
        std::size_t size = 0;
        for (const AudioBufferPtr& sound : sounds)
            size += sound->samples().size_bytes();
        return size;
    }
    static std::vector<std::size_t> lengths(const SoundBank::Variants& variants)
    {
        std::vector<std::size_t> found;
        for (const AudioBufferPtr& variant : variants)
            found.push_back(variant->samples().size());
        return found;
    }

    TemporaryFolder m_temporary;
    fs::path m_builtIn = m_temporary.path() / "Packs";
    fs::path m_custom = m_temporary.path() / "user ☃" / "Packs";
    SoundPack m_pack;
};

TEST_F(PackLibraryTest, CustomFolderIsCreatedOnEveryCall)
{
    const auto support = m_temporary.path() / "a" / "b";

    const auto folder = PackLibrary::customFolder(support);
    EXPECT_EQ(folder, support / "Clavo/Packs");
    EXPECT_TRUE(fs::is_directory(folder));

    fs::remove_all(support);
    EXPECT_TRUE(fs::is_directory(PackLibrary::customFolder(support)));
    EXPECT_EQ(PackLibrary::customFolder(support), folder);
}

TEST_F(PackLibraryTest, CustomFolderThatCannotBeCreatedIsIgnored)
{
    writeFile(m_temporary.path() / "file", "");

    const auto folder = PackLibrary::customFolder(m_temporary.path() / "file");

    EXPECT_EQ(folder, m_temporary.path() / "file/Clavo/Packs");
    EXPECT_THAT(PackLibrary::packs(folder, true), IsEmpty());
}

TEST_F(PackLibraryTest, MissingFoldersHoldNoPacks)
{
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(PackLibrary::packs({}, false), IsEmpty());
    EXPECT_THAT(PackLibrary::allPacks({}), IsEmpty());
}

TEST_F(PackLibraryTest, BuiltInPacksAreSortedByCategoryAndTheUsersByNameBehindThem)
{
    addPack(m_builtIn, "b", "tactile");
    addPack(m_builtIn, "a", "clicky");
    addPack(m_builtIn, "c", "linear");
    addPack(m_builtIn, "A", "custom");
    addPack(m_builtIn, "d", "unheard of");
    addPack(m_custom, "beta", "linear");
    addPack(m_custom, "Alpha", "special");

    EXPECT_THAT(names(), ElementsAre("c", "b", "a", "d", "A", "Alpha", "beta"));
}

TEST_F(PackLibraryTest, NamesAreSortedByCodePoint)
{
    for (const char* const name : {"alpha", "Zeta", "Éa", "𝄞", "z", "～", "10", "9"})
        addPack(m_builtIn, name);

    EXPECT_THAT(names(), ElementsAre("10", "9", "Zeta", "alpha", "z", "Éa", "～", "𝄞"));
}

TEST_F(PackLibraryTest, PacksOfTheUserAreMarked)
{
    addPack(m_builtIn, "one");
    addPack(m_custom, "one");

    const auto all = PackLibrary::allPacks({m_builtIn, m_custom});

    ASSERT_THAT(all, SizeIs(2));
    EXPECT_EQ(all[0].id, "id of one");
    EXPECT_EQ(all[1].id, "custom:id of one");
    EXPECT_EQ(all[1].category, PackCategory::custom);
}

TEST_F(PackLibraryTest, WhatIsNoPackIsPassedOver)
{
    addPack(m_builtIn, "good");
    writeFile(m_builtIn / "pack.json", manifestText());
    writeFile(m_builtIn / "file", "text");
    writeFile(m_builtIn / "broken" / "pack.json", "{");
    writeFile(m_builtIn / "group" / "nested" / "pack.json", manifestText());
    fs::create_directories(m_builtIn / "empty");

    EXPECT_THAT(names(), ElementsAre("good"));
}

TEST_F(PackLibraryTest, HiddenAndLinkedFoldersCount)
{
    writeFile(m_builtIn / ".hidden" / "pack.json", manifestText("", "", "h", "hidden"));
    writeFile(m_temporary.path() / "elsewhere" / "pack.json", manifestText("", "", "l", "linked"));
    fs::create_directory_symlink(m_temporary.path() / "elsewhere", m_builtIn / "link");

    EXPECT_THAT(names(), ElementsAre("hidden", "linked"));
}

TEST_F(PackLibraryTest, RecordingHasFiveVariantsInTheOrderOfTheirRates)
{
    addSound("a", std::vector<double>(1000, 0.5));
    m_pack.press = {{30, "a"}};

    EXPECT_THAT(lengths(bank().press.at(30)), ElementsAre(1030, 1015, 1000, 985, 970));
}

TEST_F(PackLibraryTest, MiddleVariantIsTheRecording)
{
    addSound("a", {0.5, -0.25, 0.125});
    m_pack.release = {{30, "a"}};

    const auto variants = bank().release.at(30);

    ASSERT_THAT(variants, SizeIs(5));
    EXPECT_THAT(variants[2]->samples(), ElementsAre(0.5F, -0.25F, 0.125F));
}

TEST_F(PackLibraryTest, FileOfSeveralKeysIsDecodedOnce)
{
    addSound("a", {0.5, -0.25});
    m_pack.press = {{30, "a"}, {31, "a"}};
    m_pack.release = {{30, "a"}};

    const auto made = bank();

    EXPECT_EQ(made.press.at(30), made.press.at(31));
    EXPECT_EQ(made.press.at(30), made.release.at(30));
}

TEST_F(PackLibraryTest, FileOfSeveralNamesIsDecodedOnce)
{
    addSound("a", {0.5, -0.25});
    addSound("row/b", {0.125});
    fs::create_symlink("a.wav", sound("link"));
    fs::create_hard_link(sound("a"), sound("other"));
    m_pack.press = {{30, "a"},    {31, "./a"},   {32, "row/../a"},
                    {33, "link"}, {34, "other"}, {35, "row/b"}};
    m_pack.release = {{30, "//a"}};

    const auto made = bank();

    EXPECT_EQ(made.press.at(31), made.press.at(30));
    EXPECT_EQ(made.press.at(32), made.press.at(30));
    EXPECT_EQ(made.press.at(33), made.press.at(30));
    EXPECT_EQ(made.press.at(34), made.press.at(30));
    EXPECT_EQ(made.release.at(30), made.press.at(30));
    EXPECT_NE(made.press.at(35), made.press.at(30));
}

TEST_F(PackLibraryTest, LongSoundUnderHundredsOfNamesTakesTheMemoryOfOne)
{
    addLongSounds({"a"});
    std::string name = "a";
    for (std::int64_t scancode = 0; scancode < 400; ++scancode, name.insert(0, "./"))
        m_pack.press[scancode] = name;

    const auto made = bank();

    EXPECT_THAT(made.press, SizeIs(400));
    EXPECT_EQ(made.leftOut, 0);
    EXPECT_LT(sizeOf(made), PackLibrary::bankBudget / 2);
}

TEST_F(PackLibraryTest, SoundsBehindTheBudgetAreLeftOut)
{
    addLongSounds({"first", "second", "third"});
    addSound("short", {0.5});
    addSound("late", {0.5});
    m_pack.press = {{1, "short"}, {2, "second"}, {10, "third"}, {-1, "first"}, {11, "late"}};
    m_pack.release = {{1, "first"}, {2, "short"}, {3, "late"}, {4, "missing"}};

    const auto made = bank();

    EXPECT_THAT(made.press, ElementsAre(Key(-1), Key(1), Key(2)));
    EXPECT_THAT(made.release, ElementsAre(Key(1), Key(2))) << "which were loaded before";
    EXPECT_EQ(made.leftOut, 3);
    EXPECT_LE(sizeOf(made), PackLibrary::bankBudget);
}

TEST_F(PackLibraryTest, BudgetIsThatOfTheScancodesAskedFor)
{
    addLongSounds({"first", "second", "third"});
    m_pack.press = {{1, "first"}, {2, "second"}, {3, "third"}};
    const std::set<std::int64_t> some{1, 3};

    const auto made = bank(&some);

    EXPECT_THAT(made.press, ElementsAre(Key(1), Key(3)));
    EXPECT_EQ(made.leftOut, 0);
}

TEST_F(PackLibraryTest, EachBankDecodesAfresh)
{
    addSound("a", {0.5});
    m_pack.press = {{30, "a"}};
    const auto before = bank();
    addSound("a", {0.25});

    EXPECT_THAT(before.press.at(30).front()->samples(), ElementsAre(0.5F));
    EXPECT_THAT(bank().press.at(30).front()->samples(), ElementsAre(0.25F));
}

TEST_F(PackLibraryTest, OtherRateAndMoreChannelsBecomeTheFormats)
{
    addSound("a", std::vector<double>(2UL * 4800, 0.5), {.sampleRate = 48000, .channels = 2});
    m_pack.press = {{30, "a"}};

    const auto made = bank();
    const auto recording = made.press.at(30)[2]->samples();

    EXPECT_NEAR(static_cast<double>(recording.size()), 4410, 2);
    EXPECT_NEAR(recording[2000], 0.5F, 1e-3F);
}

TEST_F(PackLibraryTest, OnlyTheScancodesAskedForAreLoaded)
{
    for (const char* const name : {"a", "b", "c"})
        addSound(name, {0.5});
    m_pack.press = {{30, "a"}, {31, "b"}, {57, "c"}};
    m_pack.release = {{31, "b"}, {57, "c"}};
    const std::set<std::int64_t> some{30, 57, 99};
    const std::set<std::int64_t> none;

    EXPECT_THAT(bank(&some).press, ElementsAre(Key(30), Key(57)));
    EXPECT_THAT(bank(&some).release, ElementsAre(Key(57)));
    EXPECT_THAT(bank(&none).press, IsEmpty());
    EXPECT_THAT(bank(&none).release, IsEmpty());
}

TEST_F(PackLibraryTest, SoundThatCannotBeLoadedGivesNoEntryAndHarmsNoOther)
{
    addSound("good", {0.5});
    addSound("nan", {0.5, std::numeric_limits<double>::quiet_NaN()});
    writeFile(m_pack.folder / "sounds" / "text.wav", "text");
    writeFile(m_pack.folder / "sounds" / "empty.wav", "");
    fs::create_directories(m_pack.folder / "sounds" / "folder.wav");
    m_pack.press = {{1, "missing"},
                    {2, "text"},
                    {3, "empty"},
                    {4, "folder"},
                    {5, "nan"},
                    {30, "good"},
                    {6, ""},
                    {7, std::string("good\0", 5)},
                    {8, std::string("good.wav\0", 9)}};

    EXPECT_THAT(bank().press, ElementsAre(Key(30)));
}

TEST_F(PackLibraryTest, SoundWithoutFramesGivesAnEntryWithoutVariants)
{
    addSound("none", {});
    m_pack.press = {{30, "none"}};

    EXPECT_THAT(bank().press.at(30), IsEmpty());
}

TEST_F(PackLibraryTest, VariantsWithoutSamplesAreLeftOut)
{
    addSound("a", {0.5});
    m_pack.press = {{30, "a"}};

    EXPECT_THAT(lengths(bank().press.at(30)), ElementsAre(1, 1, 1));
}

TEST_F(PackLibraryTest, NameMayLeadIntoSubfolders)
{
    addSound("row/a", {0.5});
    addSound("/b", {0.5});
    m_pack.press = {{30, "row/a"}, {31, "/b"}};

    EXPECT_THAT(bank().press, ElementsAre(Key(30), Key(31)));
}

TEST_F(PackLibraryTest, NameIsTakenAsItStands)
{
    addSound("a.b ☃", {0.5});
    addSound("c.wav", {0.5});
    addSound("D", {0.5});
    m_pack.press = {{1, "a.b ☃"}, {2, "c.wav"}, {3, "c"}, {4, "d"}};

    EXPECT_THAT(bank().press, ElementsAre(Key(1), Key(2)));
}

TEST_F(PackLibraryTest, ThousandsOfKeysAreLoaded)
{
    addSound("a", {0.5});
    for (std::int64_t scancode = 0; scancode < 5000; ++scancode) {
        m_pack.press[scancode] = "a";
        m_pack.release[scancode] = fmt::format("missing-{}", scancode);
    }

    EXPECT_THAT(bank().press, SizeIs(5000));
    EXPECT_THAT(bank().release, IsEmpty());
}

TEST_F(PackLibraryTest, PackWithoutFolderGivesAnEmptyBank)
{
    m_pack.press = {{30, "a"}};

    EXPECT_THAT(bank().press, IsEmpty());
}

} // namespace
} // namespace clavo
