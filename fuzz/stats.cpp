// SPDX-License-Identifier: MIT
// The file of the statistics.
#include "fakes/TemporaryFolder.h"
#include "fuzz/Input.h"
#include "stats/SnapshotFile.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <utility>

using namespace clavo;
using fuzz::require;
using nlohmann::json;

namespace
{

std::int64_t countOf(const json& value)
{
    const bool isTooLarge =
        value.is_number_unsigned() && !std::in_range<std::int64_t>(value.get<std::uint64_t>());
    if (!value.is_number_integer() || isTooLarge)
        throw std::out_of_range("a count is an integer");
    return value.get<std::int64_t>();
}

/// The statistics according to the general reader of JSON.
std::optional<StatsSnapshot> snapshotOf(const json& object)
try {
    StatsSnapshot snapshot;
    snapshot.bestWPM = countOf(object.at("bestWPM"));
    snapshot.total = countOf(object.at("total"));
    for (const auto& [day, count] : object.at("daily").get_ref<const json::object_t&>())
        snapshot.daily[day] = countOf(count);
    return snapshot;
} catch (const std::exception&) {
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    const auto text = fuzz::textOf(data, size);
    const auto snapshot = parseSnapshot(text);
    require(snapshot == snapshotOf(json::parse(text, nullptr, /*allow_exceptions=*/false)),
            "the statistics are what their JSON says");

    const auto file = folder.path() / "stats.json";
    fuzz::write(file, text);
    require(loadSnapshot(file) == snapshot.value_or(StatsSnapshot()),
            "what is unreadable is empty");
    if (!snapshot)
        return 0;
    require(parseSnapshot(toJson(*snapshot)) == snapshot, "what is saved is read");
    require(parseSnapshot(exportJson(*snapshot)) == snapshot, "what is exported is read");
    if (size % 16 != 0) // The disk is slow.
        return 0;
    require(saveSnapshot(*snapshot, file) && loadSnapshot(file) == *snapshot, "a save is whole");
    require(exportSnapshot(*snapshot, file) && loadSnapshot(file) == *snapshot, "an export too");
    return 0;
}
