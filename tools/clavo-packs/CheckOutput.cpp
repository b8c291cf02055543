// SPDX-License-Identifier: MIT
#include "clavo-packs/CheckOutput.h"

#include "text/Printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace clavo
{
namespace
{

using nlohmann::ordered_json;

/// One line. The texts come from the pack, which may hold anything.
std::string line(std::string_view start, std::string_view subject, std::string_view what)
{
    return fmt::format("{}{}: {}\n", start, printable(subject), printable(what));
}

std::string textOf(std::string_view direction, const PackCheck::Coverage& keys)
{
    std::string text =
        fmt::format("  {}: {} keys have a sound of their own\n", direction, keys.own.size());
    const auto add = [&](const std::vector<std::int64_t>& scancodes, std::string_view what) {
        if (!scancodes.empty())
            text +=
                fmt::format("    {} {}: {}\n", scancodes.size(), what, fmt::join(scancodes, ", "));
    };
    add(keys.row, "take that of another key of their row");
    add(keys.any, "take that of any key");
    add(keys.silent, "stay silent");
    return text;
}

std::string textOf(const std::vector<PackCheck::Sound>& sounds)
{
    if (sounds.empty())
        return "";
    const auto range = [&](auto figure) { return std::ranges::minmax(sounds, {}, figure); };
    const auto [softest, loudest] = range(&PackCheck::Sound::peak);
    const auto [shortest, longest] = range(&PackCheck::Sound::length);
    const auto latest = std::ranges::max(sounds, {}, &PackCheck::Sound::silence);
    return fmt::format("  sounds: {}, peaks {:.1f} … {:.1f} dB, length {:.0f} … {:.0f} ms, silence "
                       "before at most {:.0f} ms\n",
                       sounds.size(), softest.peak, loudest.peak, 1000 * shortest.length,
                       1000 * longest.length, 1000 * latest.silence);
}

ordered_json jsonOf(const PackCheck::Coverage& keys)
{
    return {{"own", keys.own}, {"row", keys.row}, {"any", keys.any}, {"silent", keys.silent}};
}

ordered_json jsonOf(const std::vector<PackCheck::Problem>& problems)
{
    ordered_json all = ordered_json::array();
    for (const auto& [file, reason] : problems)
        all.push_back({{"file", file.string()}, {"reason", reason}});
    return all;
}

ordered_json jsonOf(const PackCheck& check)
{
    ordered_json sounds = ordered_json::array();
    for (const PackCheck::Sound& sound : check.sounds)
        sounds.push_back(
            {{"file", sound.file.string()},
             {"peak", std::isinf(sound.peak) ? ordered_json() : ordered_json(sound.peak)},
             {"silence", sound.silence},
             {"length", sound.length}});
    return {{"folder", check.folder.string()},
            {"name", check.name ? ordered_json(*check.name) : ordered_json()},
            {"press", jsonOf(check.press)},
            {"release", jsonOf(check.release)},
            {"sounds", std::move(sounds)},
            {"problems", jsonOf(check.problems)},
            {"remarks", jsonOf(check.remarks)}};
}

} // namespace

std::string textOf(const PackCheck& check)
{
    std::string text = line("", check.folder.string(), check.name.value_or("no pack"));
    if (check.name)
        text +=
            textOf("press", check.press) + textOf("release", check.release) + textOf(check.sounds);
    for (const auto& [file, reason] : check.problems)
        text += line("  ", file.string(), reason);
    for (const auto& [file, reason] : check.remarks)
        text += line("  remark: ", file.string(), reason);
    return text;
}

std::string jsonOf(std::span<const PackCheck> checks)
{
    ordered_json all = ordered_json::array();
    for (const PackCheck& check : checks)
        all.push_back(jsonOf(check));
    // A name may be no UTF-8, or hold commands to the terminal.
    return all.dump(2, ' ', true, ordered_json::error_handler_t::replace) + "\n";
}

} // namespace clavo
