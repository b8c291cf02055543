// SPDX-License-Identifier: MIT
#include "clavo-type/Recording.h"

#include "audio/AudioOutput.h"
#include "audio/realtime/Mixer.h"
#include "clavo-type/Typist.h"
#include "synth/AudioBuffer.h"

#include <fmt/format.h>
#include <sndfile.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t frameRate = samplesPerSecond;
constexpr std::size_t bytesPerFrame = 6;
constexpr std::size_t greatestFile = 0xffff'0000; // Its size is a 32-bit number, header included.

[[noreturn]] void fail(const fs::path& file, std::string_view reason)
{
    throw std::runtime_error(fmt::format("{}: {}", file.string(), reason));
}

std::size_t frameOf(std::chrono::microseconds time)
{
    return static_cast<std::size_t>(time.count()) * frameRate / 1'000'000;
}

/// An output that renders when render() is called.
class RenderedOutput final : public AudioOutput
{
public:
    void prepare(Mixer& mixer, std::function<void()> /*configurationChanged*/) override
    {
        m_mixer = &mixer;
    }
    void start() override { m_isRunning = true; }
    void pause() override { m_isRunning = false; }
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }
    [[nodiscard]] OutputStatus status() const override { return {}; }

    void render(StereoBlock block) { m_mixer->render(block); }

private:
    Mixer* m_mixer = nullptr;
    bool m_isRunning = false;
};

/// A WAV file under a temporary name, which is gone with it unless the file was finished.
class WaveFile
{
public:
    explicit WaveFile(fs::path file) : m_file(std::move(file)), m_partial(m_file)
    {
        m_partial += ".partial";
        SF_INFO info{};
        info.samplerate = frameRate;
        info.channels = 2;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
        m_sound = sf_open(m_partial.c_str(), SFM_WRITE, &info);
        if (m_sound == nullptr)
            fail(m_file, sf_strerror(nullptr));
    }
    ~WaveFile()
    {
        if (m_sound != nullptr)
            sf_close(m_sound);
        std::error_code ignored;
        fs::remove(m_partial, ignored);
    }
    WaveFile(const WaveFile&) = delete;
    WaveFile& operator=(const WaveFile&) = delete;

    void write(std::span<const float> interleaved)
    {
        const auto frames = static_cast<sf_count_t>(interleaved.size() / 2);
        if (sf_writef_float(m_sound, interleaved.data(), frames) != frames)
            fail(m_file, sf_strerror(m_sound));
    }

    void finish()
    {
        // The last of it, and the header, are written now.
        if (const auto error = sf_close(std::exchange(m_sound, nullptr)); error != 0)
            fail(m_file, sf_error_number(error));
        fs::rename(m_partial, m_file);
    }

private:
    fs::path m_file;
    fs::path m_partial;
    SNDFILE* m_sound = nullptr;
};

void renderInto(WaveFile& file, RenderedOutput& output, std::size_t frames)
{
    constexpr std::size_t blockLength = 4096;
    std::array<float, blockLength> left;
    std::array<float, blockLength> right;
    std::array<float, 2 * blockLength> interleaved;
    while (frames > 0) {
        const auto count = std::min(frames, blockLength);
        output.render({std::span(left).first(count), std::span(right).first(count)});
        for (std::size_t i = 0; i < count; ++i) {
            interleaved[2 * i] = left[i];
            interleaved[2 * i + 1] = right[i];
        }
        file.write(std::span(interleaved).first(2 * count));
        frames -= count;
    }
}

/// The file behind the path, which may be a link.
fs::path target(const fs::path& path)
{
    std::error_code error;
    auto file = fs::weakly_canonical(path, error);
    if (error)
        return path;
    if (fs::exists(file) && !fs::is_regular_file(file))
        fail(path, "is not an ordinary file");
    return file;
}

} // namespace

void record(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
            const fs::path& file, const std::function<void(std::size_t)>& progress)
{
    const auto lastEvent = events.empty() ? 0 : frameOf(events.back().time);
    const auto end = lastEvent + longestSound(bank);
    constexpr auto mostFrames = greatestFile / bytesPerFrame;
    if (end > mostFrames) {
        fail(file, fmt::format("it would last {:.1f} hours, and a WAV file holds {:.1f}",
                               static_cast<double>(end) / frameRate / 3600,
                               static_cast<double>(mostFrames) / frameRate / 3600));
    }
    WaveFile wave(target(file));
    RenderedOutput output;
    Typist typist(output, bank, seed);
    std::size_t rendered = 0;
    std::size_t done = 0;
    for (const auto& [time, key] : events) {
        renderInto(wave, output, frameOf(time) - rendered);
        rendered = frameOf(time);
        typist.type(key);
        progress(++done);
    }
    renderInto(wave, output, end - rendered);
    wave.finish();
}

} // namespace clavo
