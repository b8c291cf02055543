// SPDX-License-Identifier: MIT
#include "clavo-packs/PackWriter.h"

#include "clavo-packs/KeyRendering.h"
#include "keyboard/KeyLayout.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sndfile.h>

#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

struct Closer {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

void writeWave(const fs::path& path, std::vector<std::int32_t> samples)
{
    // The library takes the upper bits of a 32-bit number.
    for (std::int32_t& sample : samples)
        sample *= 256;
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    const std::unique_ptr<SNDFILE, Closer> file(sf_open(path.c_str(), SFM_WRITE, &info));
    const auto count = static_cast<sf_count_t>(samples.size());
    if (!file || sf_writef_int(file.get(), samples.data(), count) != count)
        throw std::runtime_error(fmt::format("{}: {}", path.string(), sf_strerror(file.get())));
}

std::set<std::int64_t> scancodes()
{
    std::set<std::int64_t> all;
    for (const auto& [code, key] : KeyLayout::table())
        all.insert(key.scancode);
    return all;
}

std::string manifestOf(const Recipe& recipe)
{
    nlohmann::ordered_json manifest{
        {"id", recipe.id},         {"name", recipe.name},
        {"detail", recipe.detail}, {"category", recipe.category},
        {"credit", recipe.credit},
    };
    for (const char* const direction : {"press", "release"}) {
        for (const std::int64_t scancode : scancodes())
            manifest[direction][std::to_string(scancode)] =
                fmt::format("{}-{}", direction, scancode);
    }
    return manifest.dump(2) + "\n";
}

} // namespace

void writePack(const Recipe& recipe, const fs::path& packs)
{
    const fs::path pack = packs / recipe.id;
    const fs::path partial = packs / ("." + recipe.id + ".partial");
    fs::remove_all(partial);
    fs::create_directories(partial / "sounds");
    for (const std::int64_t scancode : scancodes()) {
        const KeyInfo key = KeyLayout::info(scancode);
        writeWave(partial / "sounds" / fmt::format("press-{}.wav", scancode),
                  renderKey(recipe, key, false));
        writeWave(partial / "sounds" / fmt::format("release-{}.wav", scancode),
                  renderKey(recipe, key, true));
    }

    // A folder becomes a pack by its manifest: it gets its name last, when all else is in place.
    std::ofstream manifest(partial / "pack.json.partial", std::ios::binary);
    manifest << manifestOf(recipe);
    manifest.close();
    if (!manifest)
        throw std::runtime_error(fmt::format("{}: cannot be written", pack.string()));
    fs::remove_all(pack);
    fs::rename(partial, pack);
    fs::rename(pack / "pack.json.partial", pack / "pack.json");
}

} // namespace clavo
