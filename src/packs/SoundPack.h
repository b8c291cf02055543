// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The kind of switch that a pack sounds like, in display order.
enum class PackCategory { linear, tactile, clicky, special, custom };

inline constexpr std::array allPackCategories{PackCategory::linear, PackCategory::tactile,
                                              PackCategory::clicky, PackCategory::special,
                                              PackCategory::custom};

/// The category's text in a manifest.
[[nodiscard]] constexpr std::string_view rawValue(PackCategory category)
{
    constexpr std::array<std::string_view, allPackCategories.size()> texts{
        "linear", "tactile", "clicky", "special", "custom"};
    return texts[static_cast<std::size_t>(category)];
}

/// The category with exactly this text, if there is one.
[[nodiscard]] constexpr std::optional<PackCategory> packCategory(std::string_view text)
{
    constexpr auto asText = [](auto value) { return rawValue(value); };
    const auto* const found = std::ranges::find(allPackCategories, text, asText);
    return found == allPackCategories.end() ? std::nullopt : std::optional(*found);
}

/// One keyboard's recordings on disk: a folder with `pack.json` and `sounds/<name>.wav`. Two packs
/// are the same pack when their ids are equal.
struct SoundPack {
    using SoundNames = std::map<std::int64_t, std::string>; // Scancode → file name without ".wav".

    /// The most characters of a text that is shown.
    static constexpr std::size_t textLimit = 200;

    std::string id; // The manifest's, as written; with the prefix "custom:" for a pack of the user.
    // Texts to show: printable() and not longer than the limit.
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
