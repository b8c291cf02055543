// SPDX-License-Identifier: MIT
#include "packs/SoundPack.h"

#include "files/WholeFile.h"
#include "log/Fatal.h"
#include "packs/Manifest.h"
#include "text/Printable.h"

#include <fmt/format.h>

#include <string_view>

namespace clavo
{
namespace
{

/// `folder` is the pack's.
SoundPack::SoundNames byNumber(const Manifest::SoundNames& names,
                               const std::filesystem::path& folder)
{
    SoundPack::SoundNames sounds;
    for (const auto& [text, name] : names) {
        const auto scancode = parseScancode(text);
        if (scancode && !sounds.try_emplace(*scancode, name).second)
            fatal(fmt::format("Duplicate values for key: '{}'", *scancode),
                  fmt::format("pack du dossier {} : le code de touche {} y est deux fois",
                              printable(folder.native()), *scancode));
    }
    return sounds;
}

/// A manifest may come from anybody, and a window takes seconds to lay out a text of megabytes.
std::string shown(std::string_view text)
{
    return printable(text, SoundPack::textLimit);
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
        .name = shown(manifest->name),
        .detail = shown(manifest->detail),
        .category = categoryOf(*manifest, isCustom),
        .credit = manifest->credit ? std::optional(shown(*manifest->credit)) : std::nullopt,
        .folder = folder,
        .press = byNumber(manifest->press, folder),
        .release = byNumber(manifest->release, folder),
    };
}

} // namespace clavo
