// SPDX-License-Identifier: MIT
#pragma once

#include "packs/PackCategory.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace clavo
{

/// One keyboard's recordings on disk: a folder with `pack.json` and `sounds/<name>.wav`. Two packs
/// are the same pack when their ids are equal.
struct SoundPack {
    using SoundNames = std::map<std::int64_t, std::string>; // Scancode → file name without ".wav".

    std::string id; // The manifest's; "custom:" in front of it for a pack of the user's.
    std::string name;
    std::string detail;
    PackCategory category = PackCategory::special;
    std::optional<std::string> credit;
    std::filesystem::path folder;
    SoundNames press;
    SoundNames release;

    /// What to load of a pack: the description is all but `press` and `release`.
    enum class Part { description, all };

    /// Reads `folder/pack.json`; nothing when the folder is not a pack. The sounds are not looked
    /// at. Two scancodes of one map that are the same number written differently are fatal, unless
    /// only the description is loaded.
    [[nodiscard]] static std::optional<SoundPack> load(const std::filesystem::path& folder,
                                                       bool isCustom, Part part = Part::all);

    bool operator==(const SoundPack& other) const { return id == other.id; }
};

} // namespace clavo

template <> struct std::hash<clavo::SoundPack> {
    std::size_t operator()(const clavo::SoundPack& pack) const noexcept
    {
        return std::hash<std::string>{}(pack.id);
    }
};
