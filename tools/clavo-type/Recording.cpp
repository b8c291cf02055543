// SPDX-License-Identifier: MIT
#include "clavo-type/Recording.h"

#include "audio/AudioOutput.h"
#include "audio/realtime/Mixer.h"
#include "clavo-type/Typist.h"
#include "synth/AudioBuffer.h"

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t frameRate = samplesPerSecond;
constexpr std::size_t channels = 2;
constexpr std::size_t bits = 24;
constexpr std::size_t bytesPerFrame = channels * bits / 8;
constexpr std::size_t pcm = 1;                    // The format's number.
constexpr std::size_t greatestFile = 0xffff'0000; // Its size is a 32-bit number, header included.

[[noreturn]] void fail(const fs::path& file, std::string_view reason)
{
    throw std::runtime_error(fmt::format("{}: {}", file.string(), reason));
}

std::size_t frameOf(std::chrono::microseconds time)
{
    return static_cast<std::size_t>(time.count()) * frameRate / 1'000'000;
}

/// An output that renders only when render() is called.
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

/// The WAV file, or the pipe it is written into. A file has a temporary name, and is removed with
/// this object unless it is finished.
class WaveFile
{
public:
    explicit WaveFile(const fs::path& path) : m_name(path)
    {
        if (path == "-")
            openStandardOutput();
        else if (fs::is_fifo(path))
            m_stream = std::fopen(path.c_str(), "wbe");
        else
            openPartial(path);
        if (m_stream == nullptr)
            failWith(errno);
    }
    ~WaveFile()
    {
        if (m_stream != nullptr && m_stream != stdout)
            static_cast<void>(std::fclose(m_stream));
        std::error_code ignored;
        if (!m_partial.empty())
            fs::remove(m_partial, ignored);
    }
    WaveFile(const WaveFile&) = delete;
    WaveFile& operator=(const WaveFile&) = delete;

    /// The header comes first: it states the number of frames, and a pipe cannot be rewound.
    void writeHeader(std::size_t frames)
    {
        constexpr std::uint32_t headerSize = 44;
        const auto size = static_cast<std::uint32_t>(frames * bytesPerFrame);
        Bytes header;
        header.text("RIFF").number(headerSize - 8 + size, 4).text("WAVE");
        header.text("fmt ").number(16, 4).number(pcm, 2).number(channels, 2).number(frameRate, 4);
        header.number(frameRate * bytesPerFrame, 4).number(bytesPerFrame, 2).number(bits, 2);
        header.text("data").number(size, 4);
        write(header);
    }

    void writeFrames(std::span<const float> interleaved)
    {
        constexpr float fullScale = 0x7fffff;
        Bytes bytes;
        for (const float sample : interleaved) {
            const auto value = std::lrint(std::clamp(sample, -1.0F, 1.0F) * fullScale);
            bytes.number(static_cast<std::uint32_t>(value), bits / 8);
        }
        write(bytes);
    }

    void finish()
    {
        auto* const stream = std::exchange(m_stream, nullptr);
        if ((stream == stdout ? std::fflush(stream) : std::fclose(stream)) != 0)
            failWith(errno);
        if (!m_partial.empty())
            fs::rename(m_partial, m_file);
    }

private:
    /// Little-endian numbers and texts.
    struct Bytes {
        std::string content;

        Bytes& text(std::string_view text)
        {
            content += text;
            return *this;
        }
        Bytes& number(std::size_t value, int size)
        {
            for (; size > 0; --size, value >>= 8U)
                content += static_cast<char>(value & 0xffU);
            return *this;
        }
    };

    [[noreturn]] void failWith(int error) const
    {
        fail(m_name, std::generic_category().message(error));
    }

    void openStandardOutput()
    {
        m_name = "the standard output";
        if (::isatty(STDOUT_FILENO) != 0)
            fail(m_name, "is a terminal");
        m_stream = stdout;
    }

    void openPartial(const fs::path& path)
    {
        if (fs::exists(path) && !fs::is_regular_file(path))
            fail(path, "is not an ordinary file");
        if (fs::is_symlink(path) && !fs::exists(path))
            fail(path, "is a link to a file that is not there");
        m_file = fs::weakly_canonical(path); // Replaces the file behind a link, not the link.
        auto partial = m_file.parent_path() / fmt::format(".clavo-type-{}.partial", ::getpid());
        m_stream = std::fopen(partial.c_str(), "wbxe");
        if (m_stream != nullptr)
            m_partial = std::move(partial);
    }

    void write(const Bytes& bytes)
    {
        const auto& content = bytes.content;
        if (std::fwrite(content.data(), 1, content.size(), m_stream) != content.size())
            failWith(errno);
    }

    fs::path m_name; // For messages.
    fs::path m_file;
    fs::path m_partial;
    std::FILE* m_stream = nullptr;
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
        file.writeFrames(std::span(interleaved).first(2 * count));
        frames -= count;
    }
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
    WaveFile wave(file);
    wave.writeHeader(end);
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
