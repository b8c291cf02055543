// SPDX-License-Identifier: MIT
#include "clavo-type/Recording.h"
#include "fakes/FileSizeLimit.h"
#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sndfile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <future>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

constexpr std::uint64_t seed = 1;

/// A file that was written.
struct Heard {
    SF_INFO format{};
    std::vector<float> left;
    std::vector<float> right;

    explicit Heard(const fs::path& file)
    {
        SNDFILE* const sound = sf_open(file.c_str(), SFM_READ, &format);
        std::vector<float> frames(static_cast<std::size_t>(format.frames * 2));
        EXPECT_EQ(sf_readf_float(sound, frames.data(), format.frames), format.frames);
        sf_close(sound);
        for (std::size_t i = 0; i < frames.size(); i += 2) {
            left.push_back(frames[i]);
            right.push_back(frames[i + 1]);
        }
    }

    [[nodiscard]] std::vector<std::size_t> soundingFrames() const
    {
        std::vector<std::size_t> frames;
        for (std::size_t i = 0; i < left.size(); ++i) {
            if (left[i] != 0 || right[i] != 0)
                frames.push_back(i);
        }
        return frames;
    }
};

SoundBank::Variants pulse(float height)
{
    return {std::make_shared<const AudioBuffer>(std::vector<float>{height})};
}

/// Sounds of one frame for A and L.
SoundBank pulses()
{
    return {.press = {{30, pulse(0.5F)}, {38, pulse(0.5F)}}, .release = {{30, pulse(0.5F)}}};
}

KeyEvent event(std::chrono::microseconds time, std::int64_t code, bool down)
{
    return {time, {.code = code, .down = down}};
}

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyL = 37;

class RecordTest : public testing::Test
{
protected:
    void recordAll(const std::vector<KeyEvent>& events, const SoundBank& bank = pulses()) const
    {
        record(events, bank, seed, file, [](std::size_t) {});
    }

    /// The names of all files in the folder.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            all.push_back(entry.path().filename().string());
        return all;
    }

    TemporaryFolder folder;
    fs::path file = folder.path() / "out.wav";
};

TEST_F(RecordTest, IsAStereoFileOfTheProgramsRate)
{
    recordAll({event(0s, keyA, true)});

    const Heard heard(file);
    EXPECT_EQ(heard.format.samplerate, 44100);
    EXPECT_EQ(heard.format.channels, 2);
    EXPECT_EQ(heard.format.format, SF_FORMAT_WAV | SF_FORMAT_PCM_24);
}

TEST_F(RecordTest, HasEverySoundAtTheFrameOfItsEvent)
{
    recordAll({event(0s, keyA, true), event(80ms, keyA, false), event(100ms, keyL, true),
               event(1s, keyL, true)});

    EXPECT_THAT(Heard(file).soundingFrames(), ElementsAre(0, 3528, 4410, 44100));
    EXPECT_EQ(Heard(file).format.frames, 44101);
}

TEST_F(RecordTest, HasThePanAndTheGainOfTheKey)
{
    recordAll({event(0s, keyA, true), event(1s, keyA, false), event(2s, keyL, true)});

    // A sits at −9/11, L at 7/11; the image is 0.6 wide, the volume 0.8, a release 0.8 as loud.
    const Heard heard(file);
    const auto level = [](double pan, double gain, bool isLeft) {
        const auto angle = (pan * 0.6 + 1) * std::numbers::pi / 4;
        return 0.5 * 0.8 * gain * (isLeft ? std::cos(angle) : std::sin(angle));
    };
    EXPECT_NEAR(heard.left[0], level(-9.0 / 11, 1, true), 1e-6);
    EXPECT_NEAR(heard.right[0], level(-9.0 / 11, 1, false), 1e-6);
    EXPECT_NEAR(heard.left[44100], level(-9.0 / 11, 0.8, true), 1e-6);
    EXPECT_NEAR(heard.left[88200], level(7.0 / 11, 1, true), 1e-6);
    EXPECT_NEAR(heard.right[88200], level(7.0 / 11, 1, false), 1e-6);
}

TEST_F(RecordTest, EndsWithTheLongestSound)
{
    auto bank = pulses();
    bank.release[38] = {std::make_shared<const AudioBuffer>(std::vector<float>(5000, 0.1F))};

    recordAll({event(0s, keyL, true), event(100ms, keyL, false)}, bank);

    EXPECT_EQ(Heard(file).soundingFrames().back(), 4410U + 4999);
    EXPECT_EQ(Heard(file).format.frames, 4410 + 5000);
}

TEST_F(RecordTest, DrawsTheVariantsByItsSeed)
{
    SoundBank bank;
    for (const float height : {0.1F, 0.2F, 0.3F, 0.4F, 0.5F})
        bank.press[30].push_back(pulse(height).front());
    constexpr int strokes = 50;
    std::vector<KeyEvent> events;
    events.reserve(strokes);
    for (int i = 0; i < strokes; ++i)
        events.push_back(event(i * 10ms, keyA, true));
    const auto bytes = [&](std::uint64_t number) {
        record(events, bank, number, file, [](std::size_t) {});
        return contentOf(file);
    };

    const auto first = bytes(1);
    EXPECT_EQ(bytes(1), first);
    EXPECT_NE(bytes(2), first);
    EXPECT_EQ(Heard(file).soundingFrames().size(), 50U);
}

TEST_F(RecordTest, ReportsEveryEvent)
{
    std::vector<std::size_t> reported;
    record(std::vector{event(0s, keyA, true), event(1s, keyA, false)}, pulses(), seed, file,
           [&](std::size_t done) { reported.push_back(done); });

    EXPECT_THAT(reported, ElementsAre(1, 2));
}

TEST_F(RecordTest, LeavesTheOldFileWhenItIsInterrupted)
{
    writeFile(file, "the old one");

    EXPECT_THROW(record(std::vector{event(0s, keyA, true), event(1s, keyA, false)}, pulses(), seed,
                        file, [](std::size_t) { throw std::runtime_error("interrupted"); }),
                 std::runtime_error);

    EXPECT_EQ(contentOf(file), "the old one");
    EXPECT_THAT(names(), ElementsAre("out.wav"));
}

TEST_F(RecordTest, LeavesNothingOnADiskThatIsFull)
{
    const FileSizeLimit limit(100'000);

    EXPECT_THROW(recordAll({event(0s, keyA, true), event(10s, keyA, false)}), std::runtime_error);

    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(RecordTest, RefusesAFolderThatDoesNotExist)
{
    file = folder.path() / "nowhere" / "out.wav";

    EXPECT_THAT([&] { recordAll({event(0s, keyA, true)}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("No such file or directory")));
}

TEST_F(RecordTest, ReplacesNothingButAnOrdinaryFile)
{
    file = "/dev/null";

    EXPECT_THAT([&] { recordAll({event(0s, keyA, true)}); },
                ThrowsMessage<std::runtime_error>("/dev/null: is not an ordinary file"));
    EXPECT_TRUE(fs::is_character_file(file));
}

TEST_F(RecordTest, ReplacesNoFolder)
{
    fs::create_directory(file);

    EXPECT_THAT([&] { recordAll({event(0s, keyA, true)}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("is not an ordinary file")));
    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(RecordTest, ReplacesNoOtherFileOnItsWay)
{
    fs::path other = file;
    other += ".partial";
    writeFile(other, "another file");

    recordAll({event(0s, keyA, true)});

    EXPECT_EQ(contentOf(other), "another file");
    EXPECT_THAT(names(), UnorderedElementsAre("out.wav", "out.wav.partial"));
}

TEST_F(RecordTest, WritesIntoAPipeWhatItWritesIntoAFile)
{
    const fs::path pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::vector<KeyEvent> events{event(0s, keyA, true), event(100ms, keyL, true)};
    recordAll(events);

    auto read = std::async(std::launch::async, [&] { return contentOf(pipe); });
    record(events, pulses(), seed, pipe, [](std::size_t) {});

    EXPECT_TRUE(read.get() == contentOf(file));
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_THAT(names(), UnorderedElementsAre("out.wav", "pipe"));
}

TEST_F(RecordTest, WritesIntoThePipeBehindALinkThatNamesNoFile)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    fs::create_symlink(fmt::format("/proc/self/fd/{}", ends[1]), file); // As /dev/stdout is one.

    recordAll({event(0s, keyA, true)});
    ::close(ends[1]);

    std::array<char, 100> content{};
    EXPECT_EQ(::read(ends[0], content.data(), content.size()), 44 + 6);
    ::close(ends[0]);
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(RecordTest, KeepsALinkThatLeadsNowhere)
{
    fs::create_symlink("nowhere.wav", file);

    EXPECT_THAT([&] { recordAll({event(0s, keyA, true)}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("a link to a file that is not there")));
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(RecordTest, WritesTheFileBehindALink)
{
    fs::create_symlink("real.wav", file);
    writeFile(folder.path() / "real.wav", "the old one");

    recordAll({event(0s, keyA, true)});

    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(Heard(folder.path() / "real.wav").format.frames, 1);
}

TEST_F(RecordTest, RefusesMoreThanAWavFileHolds)
{
    const auto record = [&] { recordAll({event(0s, keyA, true), event(5h, keyA, false)}); };

    EXPECT_THAT(record, ThrowsMessage<std::runtime_error>(
                            HasSubstr("it would last 5.0 hours, and a WAV file holds 4.5")));
    EXPECT_THAT(names(), IsEmpty());
}

} // namespace
} // namespace clavo
