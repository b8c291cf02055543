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

/// Keys pressed on each day, by day key. Days without keys need no entry.
using DailyCounts = std::map<std::string, std::int64_t>;

/// The statistics that outlive the program: counts only, nothing of what was typed.
struct StatsSnapshot {
    DailyCounts daily;
    std::int64_t bestWPM = 0; // Words per minute.
    std::int64_t total = 0;   // Keys since the statistics began or were reset.

    bool operator==(const StatsSnapshot&) const = default;
};

/// The default name of an export.
inline constexpr std::string_view exportFileName = "clavo-stats.json";

/// Reads the statistics from JSON. Nothing when the text is not one JSON object, or when a member
/// is missing or of another type; a count has to be written as an integer that 64 bits hold.
/// Unknown members are ignored.
[[nodiscard]] std::optional<StatsSnapshot> parseSnapshot(std::string_view json);

/// The statistics as JSON, without line breaks.
[[nodiscard]] std::string toJson(const StatsSnapshot& snapshot);

/// The statistics as JSON for people: one member a line, sorted, indented.
[[nodiscard]] std::string exportJson(const StatsSnapshot& snapshot);

/// The statistics in the file; empty ones when it cannot be read or holds anything else.
[[nodiscard]] StatsSnapshot loadSnapshot(const std::filesystem::path& file);

/// Replaces the file as a whole; false when it is left as it was. Any thread.
bool saveSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

/// Overwrites the file with the text for people; false when it could not be written whole.
bool exportSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file);

} // namespace clavo
