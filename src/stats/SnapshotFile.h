// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsSnapshot.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The default name of an export.
inline constexpr std::string_view exportFileName = "clavo-stats.json";

/// Reads the statistics from JSON. Nothing when the text is not one JSON object, or when a member
/// is missing or of another type; a count has to be written as an integer that 64 bits hold.
/// Members it does not know are passed over.
[[nodiscard]] std::optional<StatsSnapshot> parseSnapshot(std::string_view json);

/// The statistics as JSON, without line breaks.
[[nodiscard]] std::string toJson(const StatsSnapshot& snapshot);

/// The statistics as JSON for people: one member a line, sorted, indented.
[[nodiscard]] std::string exportJson(const StatsSnapshot& snapshot);

/// The statistics in the file; empty ones where it cannot be read or holds anything else.
[[nodiscard]] StatsSnapshot loadSnapshot(const std::filesystem::path& file);

/// Replaces the file as a whole. False: what was there is untouched. Any thread.
bool saveSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

/// Writes the text for people over what the file holds; false when it could not be written whole.
bool exportSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

} // namespace clavo
