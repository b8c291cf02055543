// SPDX-License-Identifier: MIT
#include "packs/SoundPack.h"

#include "files/WholeFile.h"
#include "log/Fatal.h"
#include "packs/Manifest.h"

#include <fmt/format.h>

#include <utility>

namespace clavo
{
namespace
{

SoundPack::SoundNames byNumber(const Manifest::SoundNames& names)
{
    SoundPack::SoundNames sounds;
    for (const auto& [text, name] : names) {
        const auto scancode = parseScancode(text);
        if (scancode && !sounds.try_emplace(*scancode, name).second)
            fatal(fmt::format("Duplicate values for key: '{}'", *scancode));
    }
    return sounds;
}

PackCategory categoryOf(const Manifest& manifest, bool isCustom)
{
    return isCustom ? PackCategory::custom
                    : packCategory(manifest.category).value_or(PackCategory::special);
}

} // namespace

std::optional<SoundPack> SoundPack::load(const std::filesystem::path& folder, bool isCustom,
                                         Part part)
{
    const auto json = readRegularFile(folder / "pack.json", maximumManifestSize);
    if (!json)
        return std::nullopt;
    auto manifest = parseManifest(*json);
    if (!manifest)
        return std::nullopt;
    if (part == Part::description) {
        manifest->press.clear();
        manifest->release.clear();
    }
    return SoundPack{
        .id = (isCustom ? "custom:" : "") + manifest->id,
        .name = std::move(manifest->name),
        .detail = std::move(manifest->detail),
        .category = categoryOf(*manifest, isCustom),
        .credit = std::move(manifest->credit),
        .folder = folder,
        .press = byNumber(manifest->press),
        .release = byNumber(manifest->release),
    };
}

} // namespace clavo
