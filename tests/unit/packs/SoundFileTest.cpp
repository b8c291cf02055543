// SPDX-License-Identifier: MIT
#include "packs/SoundFile.h"

#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Optional;

constexpr AudioFormat mono44100;

/// Numbers of a file header, lowest byte first.
std::string littleEndian(std::uint64_t number, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(number >> (8 * i));
    return text;
}

/// What the header of a 16-bit WAV file claims.
struct WaveHeader {
    std::uint64_t riffSize = 36;
    std::uint64_t formatSize = 16;
    std::uint64_t channels = 1;
    std::uint64_t sampleRate = 44100;
    std::uint64_t bits = 16;
    std::uint64_t dataSize = 0;
};

std::string wave(const WaveHeader& header, std::string_view data = {})
{
    const std::uint64_t block = header.channels * header.bits / 8;
    return "RIFF" + littleEndian(header.riffSize, 4) + "WAVEfmt " +
           littleEndian(header.formatSize, 4) + littleEndian(1, 2) +
           littleEndian(header.channels, 2) + littleEndian(header.sampleRate, 4) +
           littleEndian(header.sampleRate * block, 4) + littleEndian(block, 2) +
           littleEndian(header.bits, 2) + "data" + littleEndian(header.dataSize, 4) +
           std::string(data);
}

/// Two frames of 16 bits: 0.5 and −0.25.
const std::string twoFrames = littleEndian(0x4000, 2) + littleEndian(0xe000, 2);

class SoundFileTest : public testing::Test
{
protected:
    [[nodiscard]] auto loaded() const { return loadSound(m_file, mono44100); }

    TemporaryFolder m_temporary;
    fs::path m_file = m_temporary.path() / "töne ☃" / "a.wav";
};

/// The same few samples in every way of writing them.
struct SampleFormat {
    const char* name;
    int format;
    float tolerance;
};

class SoundFileFormat : public SoundFileTest, public testing::WithParamInterface<SampleFormat>
{
};
INSTANTIATE_TEST_SUITE_P(
    Written, SoundFileFormat,
    testing::Values(SampleFormat{"Wav8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 0},
                    SampleFormat{"Wav16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0},
                    SampleFormat{"Wav24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 0},
                    SampleFormat{"Wav32", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 0},
                    SampleFormat{"WavFloat32", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0},
                    SampleFormat{"WavFloat64", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 0},
                    SampleFormat{"WavExtended24", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 0},
                    SampleFormat{"Wav64", SF_FORMAT_W64 | SF_FORMAT_PCM_16, 0},
                    SampleFormat{"Aiff16", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 0},
                    SampleFormat{"Aiff24", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 0},
                    SampleFormat{"Flac16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 0},
                    SampleFormat{"OggVorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.05F}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_P(SoundFileFormat, IsDecodedByItsContent)
{
    std::vector<double> written(2000, 0.5);
    std::fill_n(written.begin(), 1000, -0.25);
    writeSound(m_file, written, {.format = GetParam().format});

    const auto samples = loaded();

    ASSERT_TRUE(samples);
    ASSERT_EQ(samples->size(), 2000);
    // One step of 8 bits is 1/128; writing rounds, reading does not.
    const float tolerance = std::max(GetParam().tolerance, 1.0F / 128);
    EXPECT_NEAR((*samples)[500], -0.25F, tolerance);
    EXPECT_NEAR((*samples)[1500], 0.5F, tolerance);
}

TEST_F(SoundFileTest, SamplesAreTheRecordingAsItIs)
{
    writeFile(m_file, wave({.riffSize = 40, .dataSize = 4}, twoFrames));
    EXPECT_THAT(loaded(), Optional(ElementsAre(0.5F, -0.25F)));

    writeSound(m_file, {0, 1e-20, -3.5, 0}); // No trimming, no gain, no limit.
    EXPECT_THAT(loaded(), Optional(ElementsAre(0, 1e-20F, -3.5F, 0)));
}

class SoundFileChannels : public SoundFileTest, public testing::WithParamInterface<int>
{
};
INSTANTIATE_TEST_SUITE_P(Count, SoundFileChannels, testing::Range(1, 9));

TEST_P(SoundFileChannels, AreMixedDownToTheirAverage)
{
    std::vector<double> frames;
    double first = 0;
    double second = 0;
    for (int channel = 0; channel < GetParam(); ++channel) {
        frames.push_back(0.125 * channel);
        first += frames.back();
    }
    for (int channel = 0; channel < GetParam(); ++channel) {
        frames.push_back(-0.0625 * channel * channel / 8);
        second += frames.back();
    }
    writeSound(m_file, frames, {.channels = GetParam()});

    EXPECT_THAT(loaded(), Optional(ElementsAre(static_cast<float>(first / GetParam()),
                                               static_cast<float>(second / GetParam()))));
}

class SoundFileRate : public SoundFileTest, public testing::WithParamInterface<int>
{
};
INSTANTIATE_TEST_SUITE_P(Hertz, SoundFileRate,
                         testing::Values(8000, 11025, 16000, 22050, 32000, 44100, 48000, 88200,
                                         96000, 176400, 192000));

TEST_P(SoundFileRate, IsConvertedToTheFormats)
{
    const double rate = GetParam();
    std::vector<double> tone; // A tenth of a second of 1 kHz in both channels.
    for (int i = 0; i < GetParam() / 10; ++i) {
        tone.push_back(0.5 * std::sin(2 * std::numbers::pi * 1000 * i / rate));
        tone.push_back(tone.back());
    }
    writeSound(m_file, tone, {.sampleRate = GetParam(), .channels = 2});

    const auto samples = loaded();

    ASSERT_TRUE(samples);
    EXPECT_NEAR(static_cast<double>(samples->size()), 4410, 2);
    for (std::size_t i = 1000; i < 3000; ++i) // Away from the ends, where the filter rings.
        ASSERT_NEAR((*samples)[i],
                    0.5 * std::sin(2 * std::numbers::pi * 1000 * static_cast<double>(i) / 44100),
                    1e-3)
            << i;
}

TEST_F(SoundFileTest, IsConvertedToAnyRateAskedFor)
{
    writeSound(m_file, std::vector<double>(4410, 0.5));

    const auto samples = loadSound(m_file, {.sampleRate = 48000});

    ASSERT_TRUE(samples);
    EXPECT_EQ(samples->size(), 4800);
}

TEST_F(SoundFileTest, IsNotConvertedToAnythingButMono)
{
    writeSound(m_file, {0.5});

    EXPECT_FALSE(loadSound(m_file, {.channels = 2}));
}

TEST_F(SoundFileTest, OddRatesAreConvertedToo)
{
    for (const std::uint64_t rate : {1U, 7U, 44099U, 44101U, 3000000U, 0x7fffffffU}) {
        writeFile(m_file, wave({.riffSize = 40, .sampleRate = rate, .dataSize = 4}, twoFrames));
        const auto samples = loaded();
        ASSERT_TRUE(samples) << rate;
        EXPECT_LE(samples->size(), 88200 / rate + 2);
    }
}

TEST_F(SoundFileTest, FileWithoutFramesGivesNoSamples)
{
    writeFile(m_file, wave({}));

    EXPECT_THAT(loaded(), Optional(IsEmpty()));
}

TEST_F(SoundFileTest, MissingFileGivesNothing)
{
    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, FileThatIsNoSoundGivesNothing)
{
    for (const std::string_view content : {"", "R", "text", "RIFF", "RIFF\x24\0\0\0WAVE"}) {
        writeFile(m_file, content);
        EXPECT_FALSE(loaded()) << content;
    }
    writeFile(m_file, std::string(100000, '\0'));
    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, FolderPipeAndDeviceGiveNothing)
{
    fs::create_directories(m_file);
    EXPECT_FALSE(loaded());

    fs::remove(m_file);
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);
    EXPECT_FALSE(loaded());

    fs::remove(m_file);
    fs::create_symlink("/dev/zero", m_file);
    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, NameWithAZeroByteGivesNothing)
{
    writeSound(m_file, {0.5});

    EXPECT_FALSE(loadSound(m_file.string() + std::string("\0.wav", 5), mono44100));
}

TEST_F(SoundFileTest, HeaderCutOffAnywhereGivesNoSamples)
{
    const auto header = wave({.riffSize = 40, .dataSize = 4});
    for (std::size_t length = 0; length <= header.size(); ++length) {
        writeFile(m_file, header.substr(0, length));
        EXPECT_THAT(loaded().value_or(std::vector<float>{}), IsEmpty()) << length;
    }
}

TEST_F(SoundFileTest, TruncatedFileGivesTheFramesItHas)
{
    writeFile(m_file, wave({.riffSize = 2036, .dataSize = 2000}, twoFrames));

    EXPECT_THAT(loaded(), Optional(ElementsAre(0.5F, -0.25F)));
}

TEST_F(SoundFileTest, NothingIsBelievedOfAnAbsurdHeader)
{
    for (const std::uint64_t size : {0xfffffffeU, 0xffffffffU, 0x7fffffffU, 0x80000000U}) {
        writeFile(m_file, wave({.riffSize = size, .dataSize = size}, twoFrames));
        const auto samples = loaded().value_or(std::vector<float>{});
        EXPECT_LE(samples.size(), 2);
        EXPECT_LE(samples.capacity(), 10000);
    }
    for (const WaveHeader& header :
         {WaveHeader{.channels = 0}, WaveHeader{.channels = 0xffff}, WaveHeader{.sampleRate = 0},
          WaveHeader{.sampleRate = 0xffffffff}, WaveHeader{.bits = 0}, WaveHeader{.bits = 0xffff},
          WaveHeader{.formatSize = 0}, WaveHeader{.formatSize = 0xffffffff}}) {
        auto claimed = header;
        claimed.dataSize = 4;
        writeFile(m_file, wave(claimed, twoFrames));
        EXPECT_LE(loaded().value_or(std::vector<float>{}).size(), 2);
    }
}

TEST_F(SoundFileTest, CompressedFileThatClaimsManyFramesGivesTheFramesItHas)
{
    writeSound(m_file, std::vector<double>(5000, 0.5),
               {.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16});
    auto content = contentOf(m_file);
    ASSERT_EQ(content.substr(0, 4), "fLaC");
    for (std::size_t i = 22; i < 26; ++i) // The lower 32 bits of the stream's number of frames.
        content[i] = '\xff';
    writeFile(m_file, content);

    const auto samples = loaded();

    EXPECT_LE(samples.value_or(std::vector<float>{}).size(), 5000);
    EXPECT_LE(samples.value_or(std::vector<float>{}).capacity(), 20000);
}

TEST_F(SoundFileTest, SampleThatIsNoNumberGivesNothing)
{
    for (const double sample :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        for (const int rate : {44100, 48000, 192000}) {
            for (const int channels : {1, 2}) {
                writeSound(m_file, {0.5, 0.5, sample, 0.5},
                           {.sampleRate = rate, .channels = channels});
                EXPECT_FALSE(loaded()) << sample << ' ' << rate << ' ' << channels;
            }
        }
    }
    writeSound(m_file, {0.5, 1e300}, {.format = SF_FORMAT_WAV | SF_FORMAT_DOUBLE});
    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, LoudestNumbersDoNotOverflow)
{
    const double loudest = std::numeric_limits<float>::max();
    writeSound(m_file, {loudest, loudest, -loudest, -loudest}, {.channels = 2});

    EXPECT_THAT(loaded(), Optional(ElementsAre(std::numeric_limits<float>::max(),
                                               std::numeric_limits<float>::lowest())));
}

TEST_F(SoundFileTest, RecordingOverTwoMinutesGivesNothing)
{
    const FileFormat slow{.format = SF_FORMAT_WAV | SF_FORMAT_PCM_U8, .sampleRate = 8000};
    writeSound(m_file, std::vector<double>(960000), slow);
    EXPECT_TRUE(loaded());

    writeSound(m_file, std::vector<double>(960001), slow);
    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, RateDoesNotMakeAnEndlessRecordingShort)
{
    const std::uint64_t frames = 120 * 192000 + 1;
    writeFile(
        m_file,
        wave({.riffSize = frames + 36, .sampleRate = 0x7fffffff, .bits = 8, .dataSize = frames},
             std::string(frames, '\x80')));

    EXPECT_FALSE(loaded());
}

TEST_F(SoundFileTest, FileOver64MebibytesIsNotRead)
{
    writeSound(m_file, {0.5});
    fs::resize_file(m_file, 64U << 20U);
    EXPECT_TRUE(loaded());

    fs::resize_file(m_file, (64U << 20U) + 1);
    EXPECT_FALSE(loaded());
}

} // namespace
} // namespace clavo
