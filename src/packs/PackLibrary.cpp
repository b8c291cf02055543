// SPDX-License-Identifier: MIT
#include "packs/PackLibrary.h"

#include "keyboard/KeySlot.h"
#include "log/Fatal.h"
#include "packs/BankLoader.h"
#include "synth/SwitchSynth.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
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

/// What `render` makes of each variant's number, without the empty ones.
template <typename Render> Variants variantsOf(const AudioFormat& format, const Render& render)
{
    Variants variants;
    for (std::int64_t variant = 0; variant < synthesizedVariants; ++variant) {
        if (auto sound = buffer(render(variant), format))
            variants.push_back(std::move(sound));
    }
    return variants;
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

std::vector<SoundPack> allPacks(const PackFolders& folders, SoundPack::Part part)
{
    // Texts compare byte by byte, which in UTF-8 is the order of their code points.
    auto all = packs(folders.builtIn, false, part);
    std::ranges::stable_sort(all, {}, [](const SoundPack& pack) {
        return std::tuple<PackCategory, const std::string&>(pack.category, pack.name);
    });
    auto custom = packs(folders.custom, true, part);
    std::ranges::stable_sort(custom, {}, &SoundPack::name);
    std::ranges::move(custom, std::back_inserter(all));
    return all;
}

std::vector<SoundPack> packs(const std::filesystem::path& folder, bool isCustom,
                             SoundPack::Part part)
{
    std::vector<SoundPack> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (auto pack = SoundPack::load(entry->path(), isCustom, part))
            found.push_back(*std::move(pack));
    }
    return found;
}

SoundBank makeBank(const SoundPack& pack, const AudioFormat& format,
                   const std::set<std::int64_t>* only)
{
    BankLoader loader(pack, format, only);
    while (loader.step()) {
    }
    return loader.takeBank();
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
    return variantsOf(format, [&](std::int64_t variant) {
        return SwitchSynth::render(profile, KeySlot::row3, release, variant);
    });
}

Variants mouseVariants(bool release, const AudioFormat& format)
{
    return variantsOf(format, [release](std::int64_t variant) {
        return SwitchSynth::renderMouse(release, variant);
    });
}

} // namespace clavo::PackLibrary
