// SPDX-License-Identifier: MIT
#include "packs/SoundFile.h"

#include "files/WholeFile.h"

#include <sndfile.h>
#include <soxr.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint64_t maximumFileSize = 64U << 20U;
constexpr double maximumSeconds = 120;
constexpr double maximumFrames = maximumSeconds * 192000;
// Of one step.
constexpr std::size_t blockFrames = 4096;
constexpr std::size_t blockSamples = std::size_t{1} << 16U;

/// A file in memory for libsndfile. Reading from disk, the library makes a system call for every
/// field of the header.
struct MemoryFile {
    std::string_view content;
    sf_count_t position = 0;

    [[nodiscard]] sf_count_t size() const { return static_cast<sf_count_t>(content.size()); }
};

MemoryFile& memoryFile(void* context)
{
    return *static_cast<MemoryFile*>(context);
}

sf_count_t sizeOf(void* context)
{
    return memoryFile(context).size();
}

sf_count_t seekIn(sf_count_t offset, int whence, void* context)
{
    MemoryFile& file = memoryFile(context);
    const sf_count_t origin = whence == SEEK_SET   ? 0
                              : whence == SEEK_CUR ? file.position
                                                   : file.size();
    // A header may hold any offset; compared so that the sum cannot overflow.
    if (offset < -origin || offset > file.size() - origin)
        return -1;
    file.position = origin + offset;
    return file.position;
}

sf_count_t readFrom(void* destination, sf_count_t count, void* context)
{
    MemoryFile& file = memoryFile(context);
    const sf_count_t taken = std::clamp<sf_count_t>(count, 0, file.size() - file.position);
    if (taken > 0)
        std::memcpy(destination, file.content.data() + file.position,
                    static_cast<std::size_t>(taken));
    file.position += taken;
    return taken;
}

sf_count_t tellOf(void* context)
{
    return memoryFile(context).position;
}

struct Closer {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

bool areNumbers(std::span<const float> samples)
{
    return std::ranges::all_of(samples, [](float sample) { return std::isfinite(sample); });
}

void appendAverages(std::vector<float>& mono, std::span<const float> interleaved,
                    std::size_t channels)
{
    if (channels == 1) {
        mono.insert(mono.end(), interleaved.begin(), interleaved.end());
        return;
    }
    for (; !interleaved.empty(); interleaved = interleaved.subspan(channels)) {
        const auto frame = interleaved.first(channels);
        const double sum = std::accumulate(frame.begin(), frame.end(), 0.0);
        mono.push_back(static_cast<float>(sum / static_cast<double>(channels)));
    }
}

struct ResamplerDeleter {
    void operator()(soxr_t resampler) const { soxr_delete(resampler); }
};

/// Reads the file, decodes it with its channels averaged, and converts it to the rate wanted, one
/// after the other.
class StepwiseDecoder final : public SoundDecoder
{
public:
    StepwiseDecoder(std::filesystem::path path, const AudioFormat& format)
        : m_path(std::move(path)), m_format(format)
    {
    }

    [[nodiscard]] bool step() override
    {
        switch (m_stage) {
        case Stage::reading:
            m_stage = read() ? Stage::opening : Stage::failed;
            break;
        case Stage::opening:
            m_stage = open() ? Stage::decoding : Stage::failed;
            break;
        case Stage::decoding:
            m_stage = decodeBlock();
            break;
        case Stage::resampling:
            m_stage = resampleBlock();
            break;
        case Stage::complete:
        case Stage::failed:
            break;
        }
        return m_stage != Stage::complete && m_stage != Stage::failed;
    }

    [[nodiscard]] std::optional<std::vector<float>> takeSamples() override
    {
        if (m_stage != Stage::complete)
            return std::nullopt;
        return std::move(m_samples);
    }

private:
    enum class Stage { reading, opening, decoding, resampling, complete, failed };

    [[nodiscard]] bool read()
    {
        if (m_format.channels != 1)
            return false;
        auto content = readRegularFile(m_path, maximumFileSize);
        if (!content)
            return false;
        m_content = *std::move(content);
        return true;
    }

    [[nodiscard]] bool open()
    {
        m_memory.content = m_content;
        SF_VIRTUAL_IO access{sizeOf, seekIn, readFrom, /*write*/ nullptr, tellOf};
        m_file.reset(sf_open_virtual(&access, SFM_READ, &m_info, &m_memory));
        if (!m_file || m_info.channels < 1 || m_info.samplerate < 1)
            return false;
        const auto channels = static_cast<std::size_t>(m_info.channels);
        m_interleaved.resize(std::clamp(blockSamples / channels, std::size_t{1}, blockFrames) *
                             channels);
        return true;
    }

    [[nodiscard]] Stage decodeBlock()
    {
        const auto channels = static_cast<std::size_t>(m_info.channels);
        const auto wanted = static_cast<sf_count_t>(m_interleaved.size() / channels);
        const sf_count_t frames = sf_readf_float(m_file.get(), m_interleaved.data(), wanted);
        if (frames <= 0)
            return sf_error(m_file.get()) == SF_ERR_NO_ERROR ? endDecoding() : Stage::failed;
        const auto decoded = std::span<const float>(m_interleaved)
                                 .first(static_cast<std::size_t>(frames) * channels);
        auto& block = m_blocks.emplace_back();
        appendAverages(block, decoded, channels);
        m_frames += block.size();
        const double longest = std::min(maximumSeconds * m_info.samplerate, maximumFrames);
        const bool isTooLong = static_cast<double>(m_frames) > longest;
        return isTooLong || !areNumbers(block) ? Stage::failed : Stage::decoding;
    }

    [[nodiscard]] Stage endDecoding()
    {
        m_file.reset();
        m_content = {};
        m_interleaved = {};
        const double sampleRate = m_info.samplerate;
        if (m_frames == 0 || sampleRate == m_format.sampleRate) {
            m_samples.reserve(m_frames);
            for (const auto& block : m_blocks)
                m_samples.insert(m_samples.end(), block.begin(), block.end());
            return Stage::complete;
        }

        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
        m_resampler.reset(
            soxr_create(sampleRate, m_format.sampleRate, 1, nullptr, nullptr, &quality, nullptr));
        m_source = m_blocks.front();
        m_samples.resize(static_cast<std::size_t>(m_format.sampleRate / sampleRate *
                                                  static_cast<double>(m_frames)) +
                         1024);
        m_room = m_samples;
        return m_resampler ? Stage::resampling : Stage::failed;
    }

    /// Passes one block, because the resampler's memory grows step by step with the input that it
    /// is given at once.
    [[nodiscard]] Stage resampleBlock()
    {
        const auto room = m_room.first(std::min(m_room.size(), blockSamples));
        const float* const input = m_source.empty() ? nullptr : m_source.data(); // Null: the end.
        std::size_t taken = 0;
        std::size_t given = 0;
        if (soxr_process(m_resampler.get(), input, m_source.size(), &taken, room.data(),
                         room.size(), &given) != nullptr ||
            !areNumbers(room.first(given)))
            return Stage::failed;
        m_source = m_source.subspan(taken);
        if (m_source.empty() && !m_blocks.empty()) {
            m_blocks.pop_front();
            m_source = m_blocks.empty() ? std::span<const float>() : m_blocks.front();
        }
        m_room = m_room.subspan(given);
        if (taken > 0 || given > 0)
            return Stage::resampling;
        m_samples.resize(m_samples.size() - m_room.size());
        return m_source.empty() ? Stage::complete : Stage::failed;
    }

    std::filesystem::path m_path;
    AudioFormat m_format;
    Stage m_stage = Stage::reading;
    std::string m_content; // Of the file.
    MemoryFile m_memory;
    SF_INFO m_info{};
    std::unique_ptr<SNDFILE, Closer> m_file;
    std::vector<float> m_interleaved; // One block.
    // Decoded at the file's rate. In blocks, because a growing vector copies millions at a time.
    std::deque<std::vector<float>> m_blocks;
    std::size_t m_frames = 0; // In all blocks.

    std::unique_ptr<soxr, ResamplerDeleter> m_resampler;
    std::span<const float> m_source; // What is left of the first block.
    std::vector<float> m_samples;    // The result.
    std::span<float> m_room;         // The unused end of it.
};

} // namespace

std::unique_ptr<SoundDecoder> makeSoundDecoder(std::filesystem::path path,
                                               const AudioFormat& format)
{
    return std::make_unique<StepwiseDecoder>(std::move(path), format);
}

std::optional<std::vector<float>> loadSound(const std::filesystem::path& path,
                                            const AudioFormat& format)
{
    StepwiseDecoder decoder(path, format);
    while (decoder.step()) {
    }
    return decoder.takeSamples();
}

} // namespace clavo
