// SPDX-License-Identifier: MIT
#include "stats/SnapshotFile.h"

#include "files/WholeFile.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <fstream>
#include <utility>

namespace clavo
{
namespace
{

using nlohmann::json;

// Enough for the days of two thousand years; the program never writes a larger file.
constexpr std::uint64_t greatestSize = 16 << 20;

/// The value as an integer; nothing when it is none or does not fit.
std::optional<std::int64_t> integer(const json& value)
{
    if (value.is_number_unsigned() && !std::in_range<std::int64_t>(value.get<std::uint64_t>()))
        return std::nullopt;
    if (!value.is_number_integer())
        return std::nullopt;
    return value.get<std::int64_t>();
}

std::optional<std::map<std::string, std::int64_t>> dailyCounts(const json& object)
{
    if (!object.is_object())
        return std::nullopt;
    std::map<std::string, std::int64_t> counts;
    for (const auto& [day, value] : object.items()) {
        const auto count = integer(value);
        if (!count)
            return std::nullopt;
        counts.emplace_hint(counts.end(), day, *count);
    }
    return counts;
}

json toObject(const StatsSnapshot& snapshot)
{
    auto object = json::object();
    object["daily"] = snapshot.daily;
    object["bestWPM"] = snapshot.bestWPM;
    object["total"] = snapshot.total;
    return object;
}

} // namespace

std::optional<StatsSnapshot> parseSnapshot(std::string_view text)
{
    // Values nested deeper than a day's count are dropped while they are read.
    const auto isKept = [](int depth, json::parse_event_t, const json&) { return depth <= 2; };
    const auto object = json::parse(text, isKept, /*allow_exceptions=*/false);
    if (!object.is_object())
        return std::nullopt;
    const json absent;
    const auto member = [&](const char* name) -> const json& {
        const auto found = object.find(name);
        return found == object.end() ? absent : *found;
    };
    auto daily = dailyCounts(member("daily"));
    const auto bestWPM = integer(member("bestWPM"));
    const auto total = integer(member("total"));
    if (!daily || !bestWPM || !total)
        return std::nullopt;
    return StatsSnapshot{.daily = *std::move(daily), .bestWPM = *bestWPM, .total = *total};
}

std::string toJson(const StatsSnapshot& snapshot)
{
    return toObject(snapshot).dump();
}

std::string exportJson(const StatsSnapshot& snapshot)
{
    return toObject(snapshot).dump(4) + '\n';
}

StatsSnapshot loadSnapshot(const std::filesystem::path& file)
{
    const auto text = readRegularFile(file, greatestSize);
    return text ? parseSnapshot(*text).value_or(StatsSnapshot()) : StatsSnapshot();
}

bool saveSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file)
{
    return !replaceFile(file, toJson(snapshot));
}

bool exportSnapshot(const StatsSnapshot& snapshot, const std::filesystem::path& file)
{
    // Written in place: in a sandbox the chosen file may be the only writable one of its folder.
    std::ofstream stream(file, std::ios::binary);
    stream << exportJson(snapshot);
    stream.close();
    return !stream.fail();
}

} // namespace clavo
