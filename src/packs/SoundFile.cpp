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
#include <memory>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint64_t maximumFileSize = 64U << 20U;
constexpr double maximumSeconds = 120;
constexpr double maximumFrames = maximumSeconds * 192000;
constexpr std::size_t blockFrames = 4096;

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

struct Recording {
    std::vector<float> samples;
    double sampleRate = 0;
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

/// Decodes a whole file and mixes it down to mono. Nothing when it is not a sound file or exceeds
/// the maximum length.
std::optional<Recording> decode(std::string_view content)
{
    MemoryFile memory{content};
    SF_VIRTUAL_IO access{sizeOf, seekIn, readFrom, /*write*/ nullptr, tellOf};
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, Closer> file(sf_open_virtual(&access, SFM_READ, &info, &memory));
    if (!file || info.channels < 1 || info.samplerate < 1)
        return std::nullopt;

    const auto channels = static_cast<std::size_t>(info.channels);
    const double longest = std::min(maximumSeconds * info.samplerate, maximumFrames);
    std::vector<float> interleaved(blockFrames * channels);
    Recording recording{.samples = {}, .sampleRate = static_cast<double>(info.samplerate)};
    for (;;) {
        const sf_count_t frames = sf_readf_float(file.get(), interleaved.data(), blockFrames);
        if (frames <= 0)
            break;
        const auto decoded =
            std::span<const float>(interleaved).first(static_cast<std::size_t>(frames) * channels);
        appendAverages(recording.samples, decoded, channels);
        if (static_cast<double>(recording.samples.size()) > longest)
            return std::nullopt;
    }
    if (sf_error(file.get()) != SF_ERR_NO_ERROR)
        return std::nullopt;
    return recording;
}

struct ResamplerDeleter {
    void operator()(soxr_t resampler) const { soxr_delete(resampler); }
};

/// The recording at another rate. Passed in blocks, because the resampler's memory grows step by
/// step with the input that it is given at once.
std::optional<std::vector<float>> resampled(const Recording& recording, double sampleRate)
{
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    const std::unique_ptr<soxr, ResamplerDeleter> resampler(
        soxr_create(recording.sampleRate, sampleRate, 1, nullptr, nullptr, &quality, nullptr));
    if (!resampler)
        return std::nullopt;

    const auto count = static_cast<double>(recording.samples.size());
    std::span<const float> source = recording.samples;
    std::vector<float> converted(
        static_cast<std::size_t>(sampleRate / recording.sampleRate * count) + 1024);
    std::span<float> room = converted;
    for (;;) {
        const auto block = source.first(std::min(source.size(), blockFrames));
        const float* const input = block.empty() ? nullptr : block.data(); // Null ends the input.
        std::size_t taken = 0;
        std::size_t given = 0;
        if (soxr_process(resampler.get(), input, block.size(), &taken, room.data(), room.size(),
                         &given) != nullptr)
            return std::nullopt;
        source = source.subspan(taken);
        room = room.subspan(given);
        if (taken == 0 && given == 0)
            break;
    }
    if (!source.empty())
        return std::nullopt;
    converted.resize(converted.size() - room.size());
    return converted;
}

} // namespace

std::optional<std::vector<float>> loadSound(const std::filesystem::path& path,
                                            const AudioFormat& format)
{
    if (format.channels != 1)
        return std::nullopt;
    const auto content = readRegularFile(path, maximumFileSize);
    if (!content)
        return std::nullopt;
    auto recording = decode(*content);
    if (!recording || !areNumbers(recording->samples))
        return std::nullopt;
    if (recording->samples.empty() || recording->sampleRate == format.sampleRate)
        return std::move(recording->samples);

    auto converted = resampled(*recording, format.sampleRate);
    if (!converted || !areNumbers(*converted))
        return std::nullopt;
    return converted;
}

} // namespace clavo
