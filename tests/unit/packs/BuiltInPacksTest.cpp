// SPDX-License-Identifier: MIT
#include "clavo-packs/PackWriter.h"
#include "clavo-packs/Recipe.h"
#include "keyboard/KeyLayout.h"
#include "packs/PackLibrary.h"
#include "packs/SoundFile.h"

#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

const fs::path packsFolder = CLAVO_PACKS_FOLDER;
const fs::path recipesFolder = CLAVO_RECIPES_FOLDER;

float peakOf(const std::vector<float>& samples)
{
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

/// The centre of the spectrum of the first 20 ms, weighted by power, in Hz.
double centroidOf(const std::vector<float>& samples)
{
    constexpr std::size_t frames = 882;
    double weighted = 0;
    double total = 0;
    for (std::size_t bin = 1; bin < frames / 2; ++bin) {
        const double omega =
            2 * std::numbers::pi * static_cast<double>(bin) / static_cast<double>(frames);
        double real = 0;
        double imaginary = 0;
        for (std::size_t i = 0; i < std::min(frames, samples.size()); ++i) {
            const double phase = omega * static_cast<double>(i);
            real += static_cast<double>(samples[i]) * std::cos(phase);
            imaginary -= static_cast<double>(samples[i]) * std::sin(phase);
        }
        const double power = real * real + imaginary * imaginary;
        weighted += power * static_cast<double>(bin) * 50;
        total += power;
    }
    return weighted / total;
}

/// Standard deviation as a share of the mean.
double spreadOf(const std::vector<double>& values)
{
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double sum = 0;
    for (const double value : values)
        sum += (value - mean) * (value - mean);
    return std::sqrt(sum / count) / mean;
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

    SoundPack m_pack = SoundPack::load(packsFolder / GetParam(), false).value_or(SoundPack{});
};
INSTANTIATE_TEST_SUITE_P(Pack, BuiltInPacks, testing::Values("cherrymx-red-abs", "nk-cream"),
                         [](const auto& param) {
                             std::string name = param.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(BuiltInPackFolder, HoldsTheTwoLinearPacks)
{
    std::vector<std::string> ids;
    for (const SoundPack& pack : PackLibrary::allPacks({packsFolder, {}})) {
        EXPECT_EQ(pack.category, PackCategory::linear);
        ids.push_back(pack.id);
    }

    EXPECT_THAT(ids, ElementsAre("cherrymx-red-abs", "nk-cream"));
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
        ASSERT_GT(samples.size(), 441); // Ten milliseconds.
        ASSERT_LT(samples.size(), 11025);
        EXPECT_NE(samples.front(), 0);
        EXPECT_EQ(samples.back(), 0);
    }
}

TEST_P(BuiltInPacks, NoSoundClipsAndNoneIsLost)
{
    for (const auto& samples : allSounds()) {
        EXPECT_LE(peakOf(samples), 0.9701F);
        EXPECT_GE(peakOf(samples), 0.1F);
    }
}

TEST_P(BuiltInPacks, PressesPeakWhereTheRecipePutsThem)
{
    const auto recipe = readRecipe(recipesFolder / (std::string(GetParam()) + ".json"));
    const double nominal = 0.9 * std::pow(10, recipe.headroom / 20);
    const double varied = std::pow(10, 1.6 * 1.5 / 20); // The most that one key differs.

    for (const KeySlot slot : {KeySlot::row1, KeySlot::row2, KeySlot::row3}) {
        for (const std::int64_t scancode : fallbackScancodes(slot)) {
            const auto peak = static_cast<double>(peakOf(sound(m_pack.press, scancode)));
            EXPECT_GE(peak, nominal / varied - 1e-6) << scancode;
            EXPECT_LE(peak, std::min(0.97, nominal * varied) + 1e-6) << scancode;
        }
    }
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

TEST_P(BuiltInPacks, KeysOfARowDifferLikeThoseOfARealKeyboard)
{
    for (const KeySlot slot : {KeySlot::row1, KeySlot::row2, KeySlot::row3}) {
        std::vector<double> centroids;
        std::vector<double> levels;
        for (const std::int64_t scancode : fallbackScancodes(slot)) {
            const auto samples = sound(m_pack.press, scancode);
            centroids.push_back(centroidOf(samples));
            levels.push_back(static_cast<double>(peakOf(samples)));
        }
        EXPECT_GE(spreadOf(centroids), 0.07);
        EXPECT_LE(spreadOf(centroids), 0.30);
        EXPECT_GE(spreadOf(levels), 0.07); // About 0.6 dB.
        EXPECT_LE(spreadOf(levels), 0.30); // About 2.3 dB.
    }
}

TEST_P(BuiltInPacks, AreTheSameBytesWheneverTheyAreRendered)
{
    const TemporaryFolder folder;

    writePack(readRecipe(recipesFolder / (std::string(GetParam()) + ".json")), folder.path());

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

    writePack(readRecipe(recipesFolder / (std::string(GetParam()) + ".json")), folder.path());

    EXPECT_FALSE(fs::exists(folder.path() / GetParam() / "sounds" / "old.wav"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
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
