// SPDX-License-Identifier: MIT
#include "clavo-packs/PackCheck.h"
#include "clavo-packs/CheckOutput.h"

#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// A tone after some silence, in milliseconds.
std::vector<double> tone(double amplitude, std::size_t silence = 0, std::size_t length = 50)
{
    std::vector<double> samples(silence * 44);
    for (std::size_t i = 0; i < length * 44; ++i)
        samples.push_back(amplitude * std::cos(0.1 * static_cast<double>(i)));
    return samples;
}

class PackCheckTest : public testing::Test
{
protected:
    void writeManifest(std::string_view press, std::string_view release = "") const
    {
        writeFile(m_folder / "pack.json", manifestText(press, release));
    }
    void writeSoundNamed(const std::string& name, const std::vector<double>& samples) const
    {
        writeSound(m_folder / "sounds" / (name + ".wav"), samples);
    }
    [[nodiscard]] std::vector<std::string> problems() const
    {
        return textsOf(checkPack(m_folder).problems);
    }
    [[nodiscard]] std::vector<std::string> remarks() const
    {
        return textsOf(checkPack(m_folder).remarks);
    }
    [[nodiscard]] static std::vector<std::string>
    textsOf(const std::vector<PackCheck::Problem>& problems)
    {
        std::vector<std::string> texts;
        for (const auto& [file, reason] : problems)
            texts.push_back(file.string() + ": " + reason);
        return texts;
    }

    TemporaryFolder m_temporary;
    fs::path m_folder = m_temporary.path() / "päck";
};

TEST_F(PackCheckTest, PackWithOneGoodSoundHasNoProblem)
{
    writeManifest(R"("30": "a")");
    writeSoundNamed("a", tone(0.5, 1));

    const auto check = checkPack(m_folder);

    EXPECT_THAT(check.problems, IsEmpty());
    EXPECT_EQ(check.name, "name");
    ASSERT_THAT(check.sounds, SizeIs(1));
    EXPECT_EQ(check.sounds[0].file, "sounds/a.wav");
    EXPECT_NEAR(check.sounds[0].peak, -6.02, 0.01);
    EXPECT_NEAR(check.sounds[0].silence, 0.001, 1e-5);
    EXPECT_NEAR(check.sounds[0].length, 0.051, 2e-4);
}

TEST_F(PackCheckTest, ReportsTheSourceOfEveryKeysSound)
{
    writeManifest(R"("30": "a", "57": "a")", R"("30": "a", "9999": "a")");
    writeSoundNamed("a", tone(0.5));

    const auto check = checkPack(m_folder);

    EXPECT_THAT(check.press.own, ElementsAre(30, 57));
    EXPECT_THAT(check.press.row, ElementsAre(31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 58));
    EXPECT_THAT(check.press.any, SizeIs(83 - 2 - 11));
    EXPECT_THAT(check.press.silent, IsEmpty());
    EXPECT_THAT(check.release.own, ElementsAre(30));
    EXPECT_THAT(check.release.row, SizeIs(11));
    EXPECT_THAT(check.release.any, IsEmpty());
    EXPECT_THAT(check.release.silent, SizeIs(83 - 1 - 11));
}

TEST_F(PackCheckTest, KeyOfAFileThatDoesNotLoadFallsBack)
{
    writeManifest(R"("30": "a", "31": "missing")");
    writeSoundNamed("a", tone(0.5));

    EXPECT_THAT(checkPack(m_folder).press.row, Contains(31));
    EXPECT_THAT(problems(), ElementsAre("sounds/missing.wav: is missing"));
}

TEST_F(PackCheckTest, KeyOfAnEmptyFileIsSilent)
{
    writeManifest(R"("30": "a", "31": "empty")");
    writeSoundNamed("a", tone(0.5));
    writeSoundNamed("empty", {});

    EXPECT_THAT(checkPack(m_folder).press.silent, ElementsAre(31));
    EXPECT_THAT(problems(),
                ElementsAre("sounds/empty.wav: holds no samples: its keys stay silent"));
}

TEST_F(PackCheckTest, PackThatIsTooLargeIsReportedOnce)
{
    writeManifest(R"("1": "a", "2": "b", "3": "c")", R"("1": "c")");
    writeLongSound(m_folder / "sounds" / "a.wav");
    fs::copy_file(m_folder / "sounds" / "a.wav", m_folder / "sounds" / "b.wav");
    fs::copy_file(m_folder / "sounds" / "a.wav", m_folder / "sounds" / "c.wav");

    EXPECT_THAT(checkPack(m_folder).press.own, ElementsAre(1, 2));
    EXPECT_THAT(problems(),
                Contains("pack.json: leaves 2 presses and releases without their sounds: Clavo "
                         "decodes at most 256 MiB of a pack, five speeds a sound"));
}

TEST_F(PackCheckTest, FileThatIsNoSoundIsNamed)
{
    writeManifest(R"("30": "a", "31": "text")");
    writeSoundNamed("a", tone(0.5));
    writeFile(m_folder / "sounds" / "text.wav", "no sound");

    EXPECT_THAT(problems(),
                ElementsAre(HasSubstr("sounds/text.wav: is no sound, or none of at most two")));
}

TEST_F(PackCheckTest, FaultsOfSoundsAreNamed)
{
    writeManifest(R"("1": "clipped", "2": "late", "3": "long", "4": "silent", "5": "soft")");
    writeSoundNamed("clipped", std::vector<double>(1000, 1.0));
    writeSoundNamed("late", tone(0.5, 40));
    writeSoundNamed("long", tone(0.5, 0, 3500));
    writeSoundNamed("silent", std::vector<double>(1000));
    writeSoundNamed("soft", tone(0.005));

    EXPECT_THAT(problems(),
                ElementsAre("sounds/clipped.wav: clips: it stays at full scale",
                            "sounds/late.wav: starts with 40 ms of silence, felt as a delay",
                            "sounds/long.wav: goes on for 3.5 s", "sounds/silent.wav: is silent",
                            "sounds/soft.wav: is hardly heard: it peaks at -46 dB"));
}

TEST_F(PackCheckTest, SoundThatJustReachesFullScaleDoesNotClip)
{
    writeManifest(R"("30": "a")");
    writeSoundNamed("a", {0, 0.5, 1, 1, 1, 0.5, 0});

    EXPECT_THAT(problems(), IsEmpty());
}

TEST_F(PackCheckTest, PackWithoutSoundsIsAProblem)
{
    writeManifest("");

    EXPECT_THAT(problems(), ElementsAre("pack.json: leads to no sound: the pack is silent"));
}

TEST_F(PackCheckTest, NameThatIsNoScancodeIsAProblemAndTheRestLoads)
{
    writeManifest(R"("30": "a", "KeyA": "a")");
    writeSoundNamed("a", tone(0.5));

    EXPECT_THAT(
        problems(),
        ElementsAre("pack.json: \"press\" has \"KeyA\", which is no scancode and is left out"));
    EXPECT_THAT(checkPack(m_folder).press.own, ElementsAre(30));
}

TEST_F(PackCheckTest, ScancodeWrittenTwiceIsAProblemAndStopsNoProgram)
{
    writeManifest("", R"("30": "a", "030": "a")");

    EXPECT_THAT(problems(),
                ElementsAre("pack.json: \"release\" has the scancode 30 twice, which stops Clavo"));
    EXPECT_EQ(checkPack(m_folder).name, std::nullopt);
}

TEST_F(PackCheckTest, ScancodesThatNoKeyHasAreARemark)
{
    writeManifest(R"("30": "a", "71": "a", "55": "a")", R"("30": "a", "3666": "a")");
    writeSoundNamed("a", tone(0.5));

    EXPECT_THAT(problems(), IsEmpty());
    EXPECT_THAT(
        remarks(),
        ElementsAre("pack.json: \"press\" has sounds for scancodes that no key has: 55, 71",
                    "pack.json: \"release\" has sounds for scancodes that no key has: 3666"));
}

TEST_F(PackCheckTest, UnknownMembersAreARemark)
{
    writeFile(m_folder / "pack.json",
              R"({"Press": {"30": {"x": 1}}, "catgory": [], )" + manifestText().substr(1));

    EXPECT_THAT(remarks(),
                ElementsAre("pack.json: has a member \"Press\", which Clavo does not read",
                            "pack.json: has a member \"catgory\", which Clavo does not read"));
}

TEST_F(PackCheckTest, NamesThatLeadOutOfThePackAreAProblem)
{
    writeManifest(R"("1": "../../a", "2": "link", "3": "../gone", "4": "../../gone", "5": "b")");
    writeSound(m_temporary.path() / "a.wav", tone(0.5));
    writeSoundNamed("b", tone(0.5));
    fs::create_symlink(m_temporary.path() / "a.wav", m_folder / "sounds" / "link.wav");

    EXPECT_THAT(problems(),
                ElementsAre("sounds/../../a.wav: leads out of the pack",
                            "sounds/../../gone.wav: leads out of the pack",
                            "sounds/../../gone.wav: is missing", "sounds/../gone.wav: is missing",
                            "sounds/link.wav: leads out of the pack"));
}

TEST_F(PackCheckTest, EqualIdsAreAProblemOfEachPack)
{
    writeManifest(R"("30": "a")");
    writeSoundNamed("a", tone(0.5));
    const auto other = m_temporary.path() / "other";
    fs::copy(m_folder, other, fs::copy_options::recursive);
    std::vector packs{checkPack(m_folder), checkPack(m_folder / "."), checkPack(other),
                      checkPack("missing"), checkPack("missing")};

    compareIds(packs);

    const auto problem = [](const fs::path& folder) {
        return PackCheck::Problem{"pack.json", "has the same id as " + folder.string() +
                                                   ": only one of them can be selected"};
    };
    EXPECT_THAT(packs[0].problems, ElementsAre(problem(other)));
    EXPECT_THAT(packs[2].problems, ElementsAre(problem(m_folder), problem(m_folder / ".")));
    EXPECT_THAT(packs[3].problems, SizeIs(1));
}

TEST_F(PackCheckTest, NamesCannotCommandTheTerminal)
{
    const std::string raw = "\x1b[2J\u202e";
    const std::string shown = "\ufffd[2J\ufffd";
    m_folder = m_temporary.path() / raw;
    writeFile(m_folder / "pack.json",
              R"({"\u001b[2J\u202e": 1, )" +
                  manifestText(R"("\u001b[2J\u202e": "b", "30": "\u001b[2J\u202e")", "", "id",
                               R"(\u001b[2J\u202e)")
                      .substr(1));

    const auto check = checkPack(m_folder);

    EXPECT_THAT(textOf(check), StartsWith((m_temporary.path() / shown).string() + ": " + shown));
    EXPECT_THAT(textOf(check), HasSubstr("sounds/" + shown + ".wav: is missing"));
    EXPECT_THAT(textOf(check), HasSubstr("has \"" + shown + "\", which is no scancode"));
    EXPECT_THAT(textOf(check), HasSubstr("has a member \"" + shown + "\", which"));
    for (const std::string& text : {textOf(check), jsonOf(std::vector{check})}) {
        EXPECT_THAT(text, Not(HasSubstr("\x1b")));
        EXPECT_THAT(text, Not(HasSubstr("\u202e")));
    }
    EXPECT_EQ(nlohmann::json::parse(jsonOf(std::vector{check}))[0]["name"], shown);
}

TEST_F(PackCheckTest, NumberTooLargeForJsonIsNamed)
{
    writeFile(m_folder / "pack.json", R"({"id": 1e999})");

    EXPECT_THAT(problems(), ElementsAre(HasSubstr("is not JSON")));
}

TEST_F(PackCheckTest, LongTextThatIsNotJsonIsNamedInShort)
{
    writeFile(m_folder / "pack.json", "{\"" + std::string(100'000, 'x'));

    EXPECT_THAT(problems(), ElementsAre(SizeIs(testing::Le(300))));
}

TEST_F(PackCheckTest, FolderWithoutAManifestIsNoPack)
{
    EXPECT_THAT(problems(), ElementsAre("pack.json: is missing"));
    EXPECT_EQ(checkPack(m_folder).name, std::nullopt);

    fs::create_directories(m_folder / "pack.json");
    EXPECT_THAT(problems(), ElementsAre("pack.json: is no file of at most 1 MiB that can be read"));
}

TEST_F(PackCheckTest, ManifestThatIsNotJsonIsNamedWithThePlace)
{
    writeFile(m_folder / "pack.json", "{\n  \"id\": }");

    EXPECT_THAT(problems(), ElementsAre(HasSubstr("parse error at line 2, column 9")));
}

TEST_F(PackCheckTest, MembersThatAreMissingOrOfAnotherKindAreNamed)
{
    writeFile(m_folder / "pack.json",
              R"({"id": 1, "name": "n", "detail": null, "press": {"30": 1}, "credit": []})");
    EXPECT_THAT(problems(), ElementsAre("pack.json: \"id\" is not a text",
                                        "pack.json: \"detail\" is not a text",
                                        "pack.json: \"category\" is missing",
                                        "pack.json: \"press\" is not an object of texts",
                                        "pack.json: \"release\" is missing",
                                        "pack.json: \"credit\" is not a text"));

    writeFile(m_folder / "pack.json", "[]");
    EXPECT_THAT(problems(), ElementsAre("pack.json: is no JSON object"));

    writeFile(m_folder / "pack.json", R"({"press": 1, )" + manifestText().substr(1));
    EXPECT_THAT(problems(), ElementsAre("pack.json: has a member twice, of which one is wrong"));
}

TEST_F(PackCheckTest, TextNamesPackKeysSoundsAndProblems)
{
    writeManifest(R"("30": "a")");
    writeSoundNamed("a", tone(0.5, 100));

    const std::string text = textOf(checkPack(m_folder));

    EXPECT_THAT(text, HasSubstr(m_folder.string() + ": name\n"));
    EXPECT_THAT(text, HasSubstr("  press: 1 keys have a sound of their own\n"
                                "    11 take that of another key of their row: 31, 32, "));
    EXPECT_THAT(text, HasSubstr("    71 take that of any key: 1, 2, "));
    EXPECT_THAT(text, HasSubstr("  release: 0 keys have a sound of their own\n"
                                "    83 stay silent: 1, 2, "));
    EXPECT_THAT(text, HasSubstr("  sounds: 1, peaks -6.0 … -6.0 dB, length 150 … 150 ms, silence "
                                "before at most 100 ms\n"
                                "  sounds/a.wav: starts with 100 ms of silence"));
}

TEST_F(PackCheckTest, JsonHoldsTheSame)
{
    writeManifest(R"("30": "a", "31": "silent")");
    writeSoundNamed("a", tone(0.5));
    writeSoundNamed("silent", std::vector<double>(100));

    const auto json =
        nlohmann::json::parse(jsonOf(std::vector{checkPack(m_folder), checkPack("missing")}));

    ASSERT_EQ(json.size(), 2);
    EXPECT_EQ(json[0]["folder"], m_folder.string());
    EXPECT_EQ(json[0]["name"], "name");
    EXPECT_EQ(json[0]["press"]["own"], (std::vector{30, 31}));
    EXPECT_EQ(json[0]["release"]["silent"].size(), 83);
    EXPECT_EQ(json[0]["sounds"][0]["file"], "sounds/a.wav");
    EXPECT_TRUE(json[0]["sounds"][1]["peak"].is_null());
    EXPECT_EQ(json[0]["problems"][0]["reason"], "is silent");
    EXPECT_TRUE(json[1]["name"].is_null());
    EXPECT_EQ(json[1]["problems"][0]["file"], "pack.json");
}

} // namespace
} // namespace clavo
