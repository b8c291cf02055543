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
#include <memory>
#include <span>
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

using Recordings = std::map<std::string, std::vector<float>>;

void append(Variants& variants, AudioBufferPtr sound)
{
    if (sound)
        variants.push_back(std::move(sound));
}

/// Whether a bank for the scancodes of `only`, or for all if it is null, holds this one.
bool isWanted(std::int64_t scancode, const std::set<std::int64_t>* only)
{
    return only == nullptr || only->contains(scancode);
}

/// Loads every file named for a scancode that is wanted, once, under its name.
void loadRecordings(Recordings& recordings, const SoundPack& pack,
                    const SoundPack::SoundNames& names, const AudioFormat& format,
                    const std::set<std::int64_t>* only)
{
    for (const auto& [scancode, name] : names) {
        if (!isWanted(scancode, only) || recordings.contains(name))
            continue;
        auto path = pack.folder;
        path += "/sounds/" + name + ".wav"; // As text: the name is no path of its own.
        if (auto samples = loadSound(path, format))
            recordings.emplace(name, *std::move(samples));
    }
}

/// The variants of all recordings, in the order of their rates. They live in one block of memory: a
/// bank comes and goes as a whole, and the system gives and takes one block far faster than
/// hundreds.
std::map<std::string, Variants> variantsOf(const Recordings& recordings)
{
    std::size_t total = 0;
    for (const auto& [name, samples] : recordings) {
        for (const double rate : playbackRates)
            total += replayedLength(samples.size(), rate);
    }
    const std::shared_ptr<float[]> block = std::make_unique_for_overwrite<float[]>(total);

    std::map<std::string, Variants> all;
    std::span<float> free(block.get(), total);
    for (const auto& [name, samples] : recordings) {
        Variants& variants = all[name];
        for (const double rate : playbackRates) {
            const auto replayed = free.first(replayedLength(samples.size(), rate));
            free = free.subspan(replayed.size());
            replay(samples, rate, replayed);
            if (!replayed.empty())
                variants.push_back(std::make_shared<const AudioBuffer>(block, replayed));
        }
    }
    return all;
}

std::map<std::int64_t, Variants> byScancode(const SoundPack::SoundNames& names,
                                            const std::map<std::string, Variants>& variants,
                                            const std::set<std::int64_t>* only)
{
    std::map<std::int64_t, Variants> sounds;
    for (const auto& [scancode, name] : names) {
        const auto found = variants.find(name);
        if (isWanted(scancode, only) && found != variants.end())
            sounds.emplace_hint(sounds.end(), scancode, found->second);
    }
    return sounds;
}

} // namespace

std::filesystem::path customFolder(const std::filesystem::path& applicationSupport)
{
    auto folder = applicationSupport / "Clavo" / "Packs";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

PackFolders folders(const std::filesystem::path& resources,
                    const std::filesystem::path& applicationSupport)
{
    return {.builtIn = resources.empty() ? resources : resources / "Packs",
            .custom = customFolder(applicationSupport)};
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
    Recordings recordings;
    loadRecordings(recordings, pack, pack.press, format, only);
    loadRecordings(recordings, pack, pack.release, format, only);
    const auto variants = variantsOf(recordings);
    return {.press = byScancode(pack.press, variants, only),
            .release = byScancode(pack.release, variants, only)};
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
