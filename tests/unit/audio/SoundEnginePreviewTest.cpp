// SPDX-License-Identifier: MIT
#include "unit/audio/SoundEngineFixture.h"

#include "fakes/TemporaryFolder.h"
#include "keyboard/KeyLayout.h"
#include "packs/PackLibrary.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <cmath>
#include <initializer_list>
#include <ostream>
#include <string>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::FloatEq;

/// One sound as it came.
struct Stroke {
    milliseconds time;
    float pan;
    float gain;
    float level; // Of its first sample.

    bool operator==(const Stroke&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Stroke& stroke)
{
    return stream << "{" << stroke.time.count() << " ms, pan " << stroke.pan << ", gain "
                  << stroke.gain << ", level " << stroke.level << "}";
}

class SoundEnginePreviewTest : public SoundEngineFixture
{
protected:
    /// A pack with a constant level for each key: n / 128 for the press of key n, half of it for
    /// the release.
    SoundPack pack(std::initializer_list<std::int64_t> presses,
                   std::initializer_list<std::int64_t> releases)
    {
        SoundPack pack;
        pack.id = "test";
        pack.folder = m_folder.path();
        for (const auto scancode : presses)
            pack.press[scancode] = sound("press", scancode, 1.0F / 128);
        for (const auto scancode : releases)
            pack.release[scancode] = sound("release", scancode, 1.0F / 256);
        return pack;
    }

    void preview(const SoundPack& pack)
    {
        engine().preview(
            PackLibrary::makeBank(pack, engine().format(), &SoundEngine::previewScancodes()));
    }

    /// Everything that is played in the next two seconds, each stroke in silence.
    std::vector<Stroke> strokes()
    {
        std::vector<Stroke> result;
        const auto end = time.now() + 2s;
        for (milliseconds step{0}; time.now() < end; step = 1ms) {
            const int before = engine().nextPlayer();
            time.advance(step);
            if (engine().nextPlayer() == before)
                continue;
            const auto [pan, gain] = lastPlayer();
            const auto block = rendered(output, 200);
            const float level = std::hypot(block.left[0], block.right[0]) / gain / 0.8F;
            result.push_back({time.now(), pan, gain, std::round(level * 256) / 256});
        }
        return result;
    }

private:
    std::string sound(const std::string& kind, std::int64_t scancode, float unit)
    {
        auto name = kind + std::to_string(scancode);
        writeSound(m_folder.path() / "sounds" / (name + ".wav"),
                   std::vector<double>(100, static_cast<float>(scancode) * unit));
        return name;
    }

    TemporaryFolder m_folder;
};

TEST_F(SoundEnginePreviewTest, SchedulesAPressAndAReleaseForEveryKeyOfThePhrase)
{
    engine();
    time.advance(500ms);

    preview(pack({}, {}));

    auto deadlines = time.deadlines();
    deadlines.pop_back(); // The idle check.
    for (auto& deadline : deadlines)
        deadline -= 500ms;
    EXPECT_THAT(deadlines, ElementsAre(0ms, 65ms, 105ms, 170ms, 210ms, 275ms, 345ms, 410ms, 420ms,
                                       485ms, 525ms, 590ms, 630ms, 695ms, 765ms, 830ms, 840ms,
                                       905ms, 945ms, 1010ms, 1050ms, 1115ms));
}

TEST_F(SoundEnginePreviewTest, TypesThePhraseWithThePacksSounds)
{
    const auto full =
        pack({30, 31, 32, 57, 33, 34, 35, 36, 37, 28}, {30, 31, 32, 57, 33, 34, 35, 36, 37, 28});

    preview(full);

    const auto stroke = [](milliseconds at, std::int64_t key, float gain) {
        const float level = static_cast<float>(key) / (gain == 1 ? 128.0F : 256.0F);
        return Stroke{at, KeyLayout::info(key).pan * 0.6F, gain, level};
    };
    const std::vector<Stroke> expected{
        stroke(0ms, 30, 1),      stroke(65ms, 30, 0.8F),   stroke(105ms, 31, 1),
        stroke(170ms, 31, 0.8F), stroke(210ms, 32, 1),     stroke(275ms, 32, 0.8F),
        stroke(345ms, 57, 1),    stroke(410ms, 57, 0.8F),  stroke(420ms, 33, 1),
        stroke(485ms, 33, 0.8F), stroke(525ms, 34, 1),     stroke(590ms, 34, 0.8F),
        stroke(630ms, 35, 1),    stroke(695ms, 35, 0.8F),  stroke(765ms, 57, 1),
        stroke(830ms, 57, 0.8F), stroke(840ms, 36, 1),     stroke(905ms, 36, 0.8F),
        stroke(945ms, 37, 1),    stroke(1010ms, 37, 0.8F), stroke(1050ms, 28, 1),
        stroke(1115ms, 28, 0.8F)};
    EXPECT_THAT(strokes(), ElementsAreArray(expected));
}

TEST_F(SoundEnginePreviewTest, PansEachKeyByItsPlaceNarrowed)
{
    preview(pack({30, 57, 28}, {}));

    time.advance(0ms);
    EXPECT_THAT(lastPlayer().pan, FloatEq(0.6F * (2.0F / 11 - 1))) << "A";
    time.advance(345ms);
    EXPECT_THAT(lastPlayer().pan, FloatEq(0.6F * -0.05F)) << "space";
    time.advance(1s);
    EXPECT_THAT(lastPlayer().pan, FloatEq(0.6F * 0.92F)) << "Return";
}

TEST_F(SoundEnginePreviewTest, PlaysWhatThePackHasAndItsFallbacks)
{
    preview(pack({30}, {30}));

    std::vector<milliseconds> presses;
    std::vector<milliseconds> releases;
    for (const Stroke& stroke : strokes())
        (stroke.gain == 1 ? presses : releases).push_back(stroke.time);

    EXPECT_EQ(presses.size(), 11U) << "any key sounds for a key the pack lacks";
    EXPECT_THAT(releases, ElementsAre(65ms, 170ms, 275ms, 485ms, 590ms, 695ms, 905ms, 1010ms))
        << "the home row has a release, space and Return have none";
}

TEST_F(SoundEnginePreviewTest, ReadsOnlyTheSoundsOfThePhrase)
{
    preview(pack({16, 44}, {16, 44}));

    EXPECT_THAT(strokes(), ElementsAre());
}

TEST_F(SoundEnginePreviewTest, LeavesTheSelectedPackAndTheVolumeAlone)
{
    const auto selected = steady(0.5F, 1);
    engine().setKeyBank({.press = {{30, {selected}}}, .release = {}});
    engine().setVolume(0.5F);

    preview(pack({31}, {}));
    time.advance(2s);

    EXPECT_EQ(engine().keyBank().press.at(30).front(), selected);
    EXPECT_EQ(engine().keyBank().press.size(), 1U);
    EXPECT_EQ(engine().volume(), 0.5F);
}

TEST_F(SoundEnginePreviewTest, GoesOnWhenAnotherOneBegins)
{
    const auto previewed = pack({30}, {});
    preview(previewed);
    time.advance(50ms);
    preview(previewed);

    EXPECT_EQ(strokes().size(), 21U) << "the first key of the first one was before";
}

TEST_F(SoundEnginePreviewTest, IsNotCutShortByTheIdlePause)
{
    engine();
    time.advance(9'500ms);
    preview(pack({30}, {}));

    EXPECT_EQ(strokes().size(), 11U);
    EXPECT_EQ(output.pauses(), 0);
}

TEST_F(SoundEnginePreviewTest, EndsWithTheEngine)
{
    preview(pack({30}, {}));
    time.advance(300ms);
    const auto drawn = choices.size();

    destroyEngine();
    time.advance(2s);

    EXPECT_EQ(choices.size(), drawn);
    EXPECT_FALSE(output.isRunning());
}

} // namespace
} // namespace clavo
