// SPDX-License-Identifier: MIT
#include "clavo-packs/Loudness.h"
#include "clavo-packs/PackFigures.h"
#include "clavo-packs/PackRendering.h"
#include "clavo-packs/PackWriter.h"
#include "clavo-packs/Recipe.h"
#include "clavo-packs/Report.h"
#include "clavo-packs/SoundFigures.h"
#include "keyboard/KeyLayout.h"
#include "packs/PackLibrary.h"
#include "packs/SoundFile.h"

#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;

const fs::path packsFolder = CLAVO_PACKS_FOLDER;
const fs::path recipesFolder = CLAVO_RECIPES_FOLDER;

double peakOf(const std::vector<float>& samples)
{
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(sample));
    return static_cast<double>(peak);
}

/// The sounds of a pack as the program reads them, at their original speed.
RenderedPack soundsOf(const SoundPack& pack)
{
    RenderedPack rendered;
    const auto bank = PackLibrary::makeBank(pack, {});
    const auto recordingOf = [](const SoundBank::Variants& variants) {
        const auto samples = variants.at(2)->samples();
        return std::vector<float>(samples.begin(), samples.end());
    };
    for (const auto& [scancode, variants] : bank.press)
        rendered.press[scancode] = recordingOf(variants);
    for (const auto& [scancode, variants] : bank.release)
        rendered.release[scancode] = recordingOf(variants);
    return rendered;
}

/// The sum of the third-octave bands of the presses of 15 letters, every other one of each row.
std::vector<double> bandsOf(const RenderedPack& pack, std::size_t first)
{
    std::vector<double> sum(20);
    for (const KeySlot slot : {KeySlot::row2, KeySlot::row3, KeySlot::row4}) {
        const auto scancodes = fallbackScancodes(slot);
        for (std::size_t i = 1 + first; i < 11; i += 2) {
            const auto bands = bandLevels(pack.press.at(scancodes[i]));
            std::ranges::transform(sum, bands, sum.begin(), std::plus{});
        }
    }
    return sum;
}

/// The mean difference of two sets of bands, in dB.
double distanceOf(const std::vector<double>& left, const std::vector<double>& right)
{
    constexpr double letters = 15;
    double squares = 0;
    for (std::size_t band = 0; band < left.size(); ++band)
        squares += std::pow((left[band] - right[band]) / letters, 2);
    return std::sqrt(squares / static_cast<double>(left.size()));
}

class BuiltInPacks : public testing::TestWithParam<const char*>
{
protected:
    [[nodiscard]] std::vector<float> sound(const SoundPack::SoundNames& names,
                                           std::int64_t scancode) const
    {
        const auto file = m_pack.folder / "sounds" / (names.at(scancode) + ".wav");
        return loadSound(file, {}).value_or(std::vector<float>{});
    }
    [[nodiscard]] std::vector<std::vector<float>> allSounds() const
    {
        std::vector<std::vector<float>> sounds;
        for (const auto* const names : {&m_pack.press, &m_pack.release}) {
            for (const auto& [scancode, name] : *names)
                sounds.push_back(sound(*names, scancode));
        }
        return sounds;
    }

    [[nodiscard]] static Recipe recipe()
    {
        return readRecipe(recipesFolder / (std::string(GetParam()) + ".json"));
    }
    static void write(const fs::path& packs) { writePack(recipe(), renderPack(recipe()), packs); }

    SoundPack m_pack = SoundPack::load(packsFolder / GetParam(), false).value_or(SoundPack{});
};
INSTANTIATE_TEST_SUITE_P(Pack, BuiltInPacks,
                         testing::Values("buckling-spring", "cherrymx-blue-abs",
                                         "cherrymx-brown-abs", "cherrymx-red-abs",
                                         "gateron-ink-black", "holy-panda", "nk-cream", "topre"),
                         [](const auto& param) {
                             std::string name = param.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(BuiltInPackFolder, ListsEightPacksByCategory)
{
    std::vector<std::pair<std::string_view, std::string>> packs;
    for (const SoundPack& pack : PackLibrary::allPacks({packsFolder, {}}))
        packs.emplace_back(rawValue(pack.category), pack.id);

    EXPECT_THAT(packs,
                ElementsAre(Pair("linear", "cherrymx-red-abs"), Pair("linear", "gateron-ink-black"),
                            Pair("linear", "nk-cream"), Pair("tactile", "cherrymx-brown-abs"),
                            Pair("tactile", "holy-panda"), Pair("clicky", "buckling-spring"),
                            Pair("clicky", "cherrymx-blue-abs"), Pair("special", "topre")));
}

TEST(BuiltInPackFolder, TakesAtMost40Megabytes)
{
    std::uintmax_t bytes = 0;
    for (const auto& file : fs::recursive_directory_iterator(packsFolder))
        bytes += file.is_regular_file() ? file.file_size() : 0;

    EXPECT_LE(bytes, 40'000'000);
}

TEST(BuiltInPackFolder, TwoPacksOfACategoryDifferMoreThanTheKeysOfOne)
{
    const auto packs = PackLibrary::allPacks({packsFolder, {}});
    for (const SoundPack& pack : packs) {
        const auto sounds = soundsOf(pack);
        const auto bands = bandsOf(sounds, 0);
        const double own = distanceOf(bands, bandsOf(sounds, 1));
        for (const SoundPack& other : packs) {
            if (other == pack || other.category != pack.category)
                continue;
            const double distance = distanceOf(bands, bandsOf(soundsOf(other), 0));
            EXPECT_GE(distance, 3) << pack.id << " and " << other.id;
            EXPECT_GE(distance, 2 * own) << pack.id << " and " << other.id;
        }
    }
}

TEST_P(BuiltInPacks, SayWhatTheyAre)
{
    EXPECT_EQ(m_pack.id, GetParam());
    EXPECT_NE(m_pack.name, "");
    EXPECT_NE(m_pack.detail, "");
    EXPECT_TRUE(m_pack.credit.has_value());
}

TEST_P(BuiltInPacks, HaveAPressAndAReleaseOfEveryKey)
{
    const auto bank = PackLibrary::makeBank(m_pack, {});

    for (const auto& [code, key] : KeyLayout::table()) {
        ASSERT_TRUE(bank.press.contains(key.scancode)) << key.scancode;
        ASSERT_TRUE(bank.release.contains(key.scancode)) << key.scancode;
        EXPECT_EQ(bank.press.at(key.scancode).size(), 5);
        EXPECT_EQ(bank.release.at(key.scancode).size(), 5);
    }
    EXPECT_EQ(bank.press.size(), 83);
    EXPECT_EQ(bank.release.size(), 83);
}

TEST_P(BuiltInPacks, FilesAre24BitMonoInTheProgramsOwnRate)
{
    for (const auto& file : fs::directory_iterator(m_pack.folder / "sounds")) {
        SF_INFO info{};
        SNDFILE* const opened = sf_open(file.path().c_str(), SFM_READ, &info);
        ASSERT_NE(opened, nullptr) << file;
        sf_close(opened);
        EXPECT_EQ(info.samplerate, 44100);
        EXPECT_EQ(info.channels, 1);
        EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_24);
    }
}

TEST_P(BuiltInPacks, SoundsStartAtOnceAndEndWithAnExactZero)
{
    for (const auto& samples : allSounds()) {
        ASSERT_GT(samples.size(), 441);   // Ten milliseconds.
        ASSERT_LT(samples.size(), 17640); // Four tenths of a second.
        EXPECT_NE(samples.front(), 0);
        EXPECT_EQ(samples.back(), 0);
    }
}

TEST_P(BuiltInPacks, SoundsHaveDiedAwayWhenTheyEnd)
{
    for (const auto& samples : allSounds()) {
        const std::vector<float> end(samples.end() - 441, samples.end());
        EXPECT_LE(peakOf(end), 0.05 * peakOf(samples));
    }
}

TEST_P(BuiltInPacks, NoSoundClipsAndNoneIsLost)
{
    for (const auto& samples : allSounds()) {
        EXPECT_LE(peakOf(samples), 0.9701);
        EXPECT_GE(peakOf(samples), 0.03);
    }
}

TEST_P(BuiltInPacks, AreEquallyLoudWhenTyped)
{
    EXPECT_NEAR(integratedLoudness(typingOf(soundsOf(m_pack))), packLoudness, 0.1);
}

TEST_P(BuiltInPacks, PressesOfARowPeakAtMost5DecibelsApart)
{
    std::vector<double> peaks;
    for (const KeySlot slot :
         {KeySlot::row0, KeySlot::row1, KeySlot::row2, KeySlot::row3, KeySlot::row4}) {
        for (const std::int64_t scancode : fallbackScancodes(slot))
            peaks.push_back(peakOf(sound(m_pack.press, scancode)));
    }
    const auto [lowest, highest] = std::ranges::minmax(peaks);
    EXPECT_LE(20 * std::log10(highest / lowest), 5.25 + 0.01);
}

TEST_P(BuiltInPacks, LargeKeysPeakAboveEachOtherAsTheRecipeSays)
{
    const auto recipe = this->recipe();
    const auto levelOf = [&](std::int64_t scancode) {
        return 20 * std::log10(peakOf(sound(m_pack.press, scancode)));
    };
    const auto above = [&](const char* group) {
        return recipe.levels.at(group) - recipe.levels.at("enter");
    };
    EXPECT_NEAR(levelOf(57) - levelOf(28), above("space"), 0.001);
    EXPECT_NEAR(levelOf(14) - levelOf(28), above("backspace"), 0.001);
    EXPECT_NEAR(levelOf(3612) - levelOf(28), 0, 0.001);
}

TEST_P(BuiltInPacks, LoudestSampleOfAPressComesWithin18Milliseconds)
{
    for (const auto& [scancode, name] : m_pack.press) {
        const auto samples = sound(m_pack.press, scancode);
        const auto loudest =
            std::ranges::max_element(samples, {}, [](float sample) { return std::abs(sample); });
        EXPECT_LE(loudest - samples.begin(), 794) << scancode;
    }
}

TEST_P(BuiltInPacks, EveryKeyHasItsOwnSound)
{
    auto sounds = allSounds();
    std::ranges::sort(sounds);

    EXPECT_EQ(std::ranges::adjacent_find(sounds), sounds.end());
}

TEST_P(BuiltInPacks, MeasureAsRealKeyboardsDo)
{
    const auto recipe = this->recipe();
    const std::string report = reportOf(recipe, figuresOf(soundsOf(m_pack)));

    // The red's hits die away as fast as those of the recording, sooner than a press is long.
    const bool isShort = m_pack.id == "cherrymx-red-abs";
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);) {
        if (!isShort || !line.starts_with("  press length")) {
            EXPECT_EQ(line.find("outside"), std::string::npos) << line;
        }
    }
}

TEST_P(BuiltInPacks, AreTheSameBytesWheneverTheyAreRendered)
{
    const TemporaryFolder folder;

    write(folder.path());

    std::size_t files = 0;
    for (const auto& file : fs::recursive_directory_iterator(m_pack.folder)) {
        if (!file.is_regular_file())
            continue;
        const auto other =
            folder.path() / GetParam() / file.path().lexically_relative(m_pack.folder);
        EXPECT_TRUE(contentOf(file.path()) == contentOf(other)) << other;
        ++files;
    }
    EXPECT_EQ(files, 1 + 2 * 83);
}

TEST_P(BuiltInPacks, RenderedAnewReplaceWhatIsThere)
{
    const TemporaryFolder folder;
    writeFile(folder.path() / GetParam() / "sounds" / "old.wav", "old");
    writeFile(folder.path() / ("." + std::string(GetParam()) + ".partial") / "left over", "old");

    write(folder.path());

    EXPECT_FALSE(fs::exists(folder.path() / GetParam() / "sounds" / "old.wav"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(PackRendering, PackThatWouldClipAtTheCommonLoudnessIsRefused)
{
    auto recipe = readRecipe(recipesFolder / "nk-cream.json");
    recipe.levels["backspace"] = 30;

    EXPECT_THROW((void)renderPack(recipe), std::runtime_error);
}

TEST(Recipe, ErrorNamesTheFileAndTheFault)
{
    const TemporaryFolder folder;
    const auto file = folder.path() / "red.json";
    const auto errorOf = [&](const fs::path& path) -> std::string {
        try {
            (void)readRecipe(path);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(errorOf(file), file.string() + ": cannot be read");

    writeFile(file, "{");
    EXPECT_THAT(errorOf(file), testing::HasSubstr("parse error"));

    writeFile(file, "{}");
    EXPECT_THAT(errorOf(file), testing::HasSubstr("'id' not found"));

    writeFile(file, contentOf(recipesFolder / "nk-cream.json"));
    EXPECT_EQ(errorOf(file), file.string() + ": the file is not named after its \"id\"");
}

} // namespace
} // namespace clavo
