// SPDX-License-Identifier: MIT
#include "packs/PackLibrary.h"

#include "log/Fatal.h"
#include "packs/PlaybackRate.h"
#include "packs/SoundFile.h"
#include "synth/SwitchSynth.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>

namespace clavo::PackLibrary
{
namespace
{

using Variants = SoundBank::Variants;

constexpr std::int64_t synthesizedVariants = 5;

void append(Variants& variants, AudioBufferPtr sound)
{
    if (sound)
        variants.push_back(std::move(sound));
}

/// Loads the sound files of one pack, each of them once.
class SoundLoader
{
public:
    SoundLoader(const SoundPack& pack, const AudioFormat& format)
        : m_sounds(pack.folder / "sounds"), m_format(format)
    {
    }

    std::map<std::int64_t, Variants> load(const SoundPack::SoundNames& names,
                                          const std::set<std::int64_t>* only)
    {
        std::map<std::int64_t, Variants> sounds;
        for (const auto& [scancode, name] : names) {
            if (only != nullptr && !only->contains(scancode))
                continue;
            if (const Variants* const found = variants(name))
                sounds.emplace_hint(sounds.end(), scancode, *found);
        }
        return sounds;
    }

private:
    /// The variants of a file, in the order of their rates; null when it cannot be loaded.
    const Variants* variants(const std::string& name)
    {
        if (const auto known = m_cache.find(name); known != m_cache.end())
            return &known->second;
        auto path = m_sounds;
        path += "/" + name + ".wav"; // As text: the name is no path of its own.
        const auto samples = loadSound(path, m_format);
        if (!samples)
            return nullptr;
        Variants variants;
        for (const double rate : playbackRates)
            append(variants, buffer(atRate(*samples, rate), m_format));
        return &m_cache.emplace(name, std::move(variants)).first->second;
    }

    std::filesystem::path m_sounds;
    AudioFormat m_format;
    std::map<std::string, Variants> m_cache;
};

} // namespace

std::filesystem::path customFolder(const std::filesystem::path& applicationSupport)
{
    auto folder = applicationSupport / "Clavo" / "Packs";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

std::vector<SoundPack> allPacks(const PackFolders& folders)
{
    // Texts compare byte by byte, which in UTF-8 is the order of their code points.
    auto all = packs(folders.builtIn, false);
    std::ranges::stable_sort(all, {}, [](const SoundPack& pack) {
        return std::tuple<PackCategory, const std::string&>(pack.category, pack.name);
    });
    auto custom = packs(folders.custom, true);
    std::ranges::stable_sort(custom, {}, &SoundPack::name);
    std::ranges::move(custom, std::back_inserter(all));
    return all;
}

std::vector<SoundPack> packs(const std::filesystem::path& folder, bool isCustom)
{
    std::vector<SoundPack> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (auto pack = SoundPack::load(entry->path(), isCustom))
            found.push_back(*std::move(pack));
    }
    return found;
}

SoundBank makeBank(const SoundPack& pack, const AudioFormat& format,
                   const std::set<std::int64_t>* only)
{
    SoundLoader loader(pack, format);
    auto press = loader.load(pack.press, only);
    auto release = loader.load(pack.release, only);
    return {.press = std::move(press), .release = std::move(release)};
}

AudioBufferPtr buffer(std::vector<float> samples, const AudioFormat& format)
{
    if (samples.size() > std::numeric_limits<std::uint32_t>::max())
        fatal("a sound has more samples than 32 bits count");
    if (samples.empty() || format.channels != 1)
        return nullptr;
    return std::make_shared<const AudioBuffer>(std::move(samples));
}

Variants synthVariants(const SwitchProfile& profile, bool release, const AudioFormat& format)
{
    Variants variants;
    for (std::int64_t variant = 0; variant < synthesizedVariants; ++variant)
        append(variants,
               buffer(SwitchSynth::render(profile, KeySlot::row3, release, variant), format));
    return variants;
}

Variants mouseVariants(bool release, const AudioFormat& format)
{
    Variants variants;
    for (std::int64_t variant = 0; variant < synthesizedVariants; ++variant)
        append(variants, buffer(SwitchSynth::renderMouse(release, variant), format));
    return variants;
}

} // namespace clavo::PackLibrary
