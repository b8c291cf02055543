// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{

/// Writes a file and the folders above it.
inline void writeFile(const std::filesystem::path& path, std::string_view content)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    ASSERT_TRUE(file.good()) << path;
}

inline std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

/// How a sound file is written: a format of libsndfile, frames per second and channels.
struct FileFormat {
    int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    int sampleRate = 44100;
    int channels = 1;
};

/// Writes a sound file; the samples of a frame stand together.
inline void writeSound(const std::filesystem::path& path, const std::vector<double>& samples,
                       const FileFormat& format = {})
{
    std::filesystem::create_directories(path.parent_path());
    SF_INFO info{};
    info.samplerate = format.sampleRate;
    info.channels = format.channels;
    info.format = format.format;
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    const auto count = static_cast<sf_count_t>(samples.size());
    EXPECT_EQ(sf_write_double(file, samples.data(), count), count);
    sf_close(file);
}

/// Writes the longest sound that loads, but for a second: silence, in a small file. Decoded, with
/// its variants, it takes 105 MB.
inline void writeLongSound(const std::filesystem::path& path)
{
    constexpr std::size_t seconds = 119;
    writeSound(path, std::vector<double>(seconds * 44100),
               {.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16});
}

/// A manifest with these members of "press" and "release", written as JSON.
inline std::string manifestText(std::string_view press = "", std::string_view release = "",
                                std::string_view id = "id", std::string_view name = "name",
                                std::string_view category = "linear")
{
    std::string json = R"({"id": ")";
    json.append(id).append(R"(", "name": ")").append(name);
    json.append(R"(", "detail": "detail", "category": ")").append(category);
    json.append(R"(", "credit": "credit", "press": {)").append(press);
    json.append(R"(}, "release": {)").append(release).append("}}");
    return json;
}

} // namespace clavo
