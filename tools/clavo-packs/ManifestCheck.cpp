// SPDX-License-Identifier: MIT
#include "clavo-packs/ManifestCheck.h"

#include "files/WholeFile.h"
#include "packs/Manifest.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <string_view>
#include <system_error>

namespace clavo
{
namespace
{

using nlohmann::json;

/// Why a text is no manifest.
std::vector<std::string> faultsOf(std::string_view text)
{
    json object;
    try {
        object = json::parse(text);
    } catch (const json::exception& error) {
        // The message quotes the place, which may be as long as the file.
        return {fmt::format("is not JSON: {:.200}", error.what())};
    }
    if (!object.is_object())
        return {"is no JSON object"};

    std::vector<std::string> faults;
    const auto require = [&](const char* name, const char* kind, auto isRight) {
        if (!object.contains(name))
            faults.push_back(fmt::format("\"{}\" is missing", name));
        else if (!isRight(object.at(name)))
            faults.push_back(fmt::format("\"{}\" is not {}", name, kind));
    };
    const auto isText = [](const json& value) { return value.is_string(); };
    for (const char* const name : {"id", "name", "detail", "category"})
        require(name, "a text", isText);
    for (const char* const name : {"press", "release"})
        require(name, "an object of texts", [&](const json& value) {
            return value.is_object() && std::ranges::all_of(value, isText);
        });
    if (object.contains("credit") && !object.at("credit").is_null())
        require("credit", "a text", isText);
    if (faults.empty())
        faults.emplace_back("has a member twice, of which one is wrong");
    return faults;
}

std::vector<std::string> remarksOn(std::string_view text)
{
    constexpr std::array known{"id", "name", "detail", "category", "credit", "press", "release"};
    std::vector<std::string> remarks;
    const auto manifest = json::parse(text);
    for (const auto& [name, value] : manifest.items()) {
        if (std::ranges::find(known, name) == known.end())
            remarks.push_back(fmt::format("has a member \"{}\", which Clavo does not read", name));
    }
    return remarks;
}

/// Reports the names of one map that are no scancode, or one that another name is too.
void checkScancodes(ManifestCheck& check, std::string_view map, const Manifest::SoundNames& names)
{
    std::set<std::int64_t> seen;
    for (const auto& [text, file] : names) {
        const auto scancode = parseScancode(text);
        if (!scancode) {
            check.problems.push_back(
                fmt::format("\"{}\" has \"{}\", which is no scancode and is left out", map, text));
        } else if (!seen.insert(*scancode).second) {
            check.problems.push_back(
                fmt::format("\"{}\" has the scancode {} twice, which stops Clavo", map, *scancode));
            check.isAccepted = false;
        }
    }
}

} // namespace

ManifestCheck checkManifest(const std::filesystem::path& file)
{
    const auto text = readRegularFile(file, maximumManifestSize);
    if (!text) {
        std::error_code ignored;
        if (!std::filesystem::exists(file, ignored))
            return {.problems = {"is missing"}, .remarks = {}};
        return {.problems = {fmt::format("is no file of at most {} MiB that can be read",
                                         maximumManifestSize >> 20U)},
                .remarks = {}};
    }
    const auto manifest = parseManifest(*text);
    if (!manifest)
        return {.problems = faultsOf(*text), .remarks = {}};
    ManifestCheck check{.isAccepted = true, .problems = {}, .remarks = remarksOn(*text)};
    checkScancodes(check, "press", manifest->press);
    checkScancodes(check, "release", manifest->release);
    return check;
}

} // namespace clavo
