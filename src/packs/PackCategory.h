// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace clavo
{

/// The kind of switch that a pack sounds like, in the order in which packs are shown.
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

/// The category whose text is exactly the given one, if there is one.
[[nodiscard]] constexpr std::optional<PackCategory> packCategory(std::string_view text)
{
    constexpr auto asText = [](auto value) { return rawValue(value); };
    const auto* const found = std::ranges::find(allPackCategories, text, asText);
    return found == allPackCategories.end() ? std::nullopt : std::optional(*found);
}

} // namespace clavo
