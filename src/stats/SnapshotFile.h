// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The persistent statistics: counts only, nothing of what was typed.
struct StatsSnapshot {
    /// Keys by day key; a day without keys needs no entry.
    std::map<std::string, std::int64_t> daily;
    std::int64_t bestWPM = 0; // Words per minute.
    std::int64_t total = 0;   // Keys since the statistics began or were reset.

    bool operator==(const StatsSnapshot&) const = default;
};

/// The default name of an export.
inline constexpr std::string_view exportFileName = "clavo-stats.json";

/// Reads the statistics from JSON. Nothing when the text is not one JSON object, or when a member
/// is missing or of the wrong type; a count must be an integer of 64 bits. Unknown members are
/// ignored.
[[nodiscard]] std::optional<StatsSnapshot> parseSnapshot(std::string_view json);

/// The statistics as JSON in one line.
[[nodiscard]] std::string toJson(const StatsSnapshot& snapshot);

/// The statistics as JSON for people: sorted and indented, one member per line.
[[nodiscard]] std::string exportJson(const StatsSnapshot& snapshot);

/// The statistics in the file; empty ones when it cannot be read or holds anything else.
[[nodiscard]] StatsSnapshot loadSnapshot(const std::filesystem::path& file);

/// Replaces the file as a whole. On failure (false) the file is unchanged. Any thread.
bool saveSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

/// Overwrites the file with exportJson(); false when it could not be written completely.
bool exportSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

} // namespace clavo
