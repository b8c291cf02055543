// SPDX-License-Identifier: MIT
#include "clavo-packs/PackWriter.h"

#include "synth/AudioBuffer.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sndfile.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

struct Closer {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

void writeWave(const fs::path& path, const std::vector<float>& sound)
{
    // The library takes the upper 24 bits of a 32-bit number.
    std::vector<std::int32_t> samples;
    samples.reserve(sound.size());
    for (const float sample : sound)
        samples.push_back(static_cast<std::int32_t>(std::lround(sample * 0x1p23F)) * 256);
    SF_INFO info{};
    info.samplerate = samplesPerSecond;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    const std::unique_ptr<SNDFILE, Closer> file(sf_open(path.c_str(), SFM_WRITE, &info));
    const auto count = static_cast<sf_count_t>(samples.size());
    if (!file || sf_writef_int(file.get(), samples.data(), count) != count)
        throw std::runtime_error(fmt::format("{}: {}", path.string(), sf_strerror(file.get())));
}

std::string soundName(std::string_view direction, std::int64_t scancode)
{
    return fmt::format("{}-{}", direction, scancode);
}

std::string manifestOf(const Recipe& recipe, const RenderedPack& pack)
{
    nlohmann::ordered_json manifest{
        {"id", recipe.id},         {"name", recipe.name},
        {"detail", recipe.detail}, {"category", recipe.category},
        {"credit", recipe.credit},
    };
    for (const auto& [scancode, samples] : pack.press)
        manifest["press"][std::to_string(scancode)] = soundName("press", scancode);
    for (const auto& [scancode, samples] : pack.release)
        manifest["release"][std::to_string(scancode)] = soundName("release", scancode);
    return manifest.dump(2) + "\n";
}

void writeSounds(const fs::path& folder, std::string_view direction,
                 const RenderedPack::Sounds& sounds)
{
    for (const auto& [scancode, samples] : sounds)
        writeWave(folder / (soundName(direction, scancode) + ".wav"), samples);
}

} // namespace

void writePack(const Recipe& recipe, const RenderedPack& rendered, const fs::path& packs)
{
    const fs::path pack = packs / recipe.id;
    const fs::path partial = packs / ("." + recipe.id + ".partial");
    fs::remove_all(partial);
    fs::create_directories(partial / "sounds");
    writeSounds(partial / "sounds", "press", rendered.press);
    writeSounds(partial / "sounds", "release", rendered.release);

    // The manifest makes a folder a pack, so it gets its name last.
    std::ofstream manifest(partial / "pack.json.partial", std::ios::binary);
    manifest << manifestOf(recipe, rendered);
    manifest.close();
    if (!manifest)
        throw std::runtime_error(fmt::format("{}: cannot be written", pack.string()));
    fs::remove_all(pack);
    fs::rename(partial, pack);
    fs::rename(pack / "pack.json.partial", pack / "pack.json");
}

} // namespace clavo
