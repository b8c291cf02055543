// SPDX-License-Identifier: MIT
#include "clavo-packs/ManifestCheck.h"

#include "files/WholeFile.h"
#include "packs/Manifest.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
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
    } catch (const json::parse_error& error) {
        return {fmt::format("is not JSON: {}", error.what())};
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

/// The names of one map that are not one scancode each.
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
            return {.problems = {"is missing"}};
        return {.problems = {fmt::format("is no file of at most {} MiB that can be read",
                                         maximumManifestSize >> 20U)}};
    }
    const auto manifest = parseManifest(*text);
    if (!manifest)
        return {.problems = faultsOf(*text)};
    ManifestCheck check{.isAccepted = true, .problems = {}};
    checkScancodes(check, "press", manifest->press);
    checkScancodes(check, "release", manifest->release);
    return check;
}

} // namespace clavo
