// SPDX-License-Identifier: MIT
// A pack's manifest, and the pack that is made of it.
#include "packs/Manifest.h"
#include "fakes/TemporaryFolder.h"
#include "fuzz/Input.h"
#include "packs/SoundPack.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>

using namespace clavo;
using fuzz::require;
using nlohmann::json;

namespace
{

/// The manifest according to the general reader of JSON.
std::optional<Manifest> manifestOf(const json& object)
try {
    Manifest manifest{.id = object.at("id").get<std::string>(),
                      .name = object.at("name").get<std::string>(),
                      .detail = object.at("detail").get<std::string>(),
                      .category = object.at("category").get<std::string>(),
                      .credit = std::nullopt,
                      .press = object.at("press").get<Manifest::SoundNames>(),
                      .release = object.at("release").get<Manifest::SoundNames>()};
    if (const auto credit = object.find("credit"); credit != object.end() && !credit->is_null())
        manifest.credit = credit->get<std::string>();
    return manifest;
} catch (const json::exception&) {
    return std::nullopt;
}

std::optional<std::int64_t> numberOf(const std::string& text)
{
    const auto digits = text.find_first_not_of("+-") == 1 ? text.substr(1) : text;
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    errno = 0;
    const auto number = std::strtoll(text.c_str(), nullptr, 10);
    return errno == 0 ? std::optional<std::int64_t>(number) : std::nullopt;
}

/// The sounds by scancode; nothing when two names are the same number, which ends the program.
std::optional<SoundPack::SoundNames> soundsOf(const Manifest::SoundNames& names)
{
    SoundPack::SoundNames sounds;
    for (const auto& [text, name] : names) {
        const auto number = numberOf(text);
        require(parseScancode(text) == number, "a scancode is a decimal number of 64 bits");
        if (number && !sounds.emplace(*number, name).second)
            return std::nullopt;
    }
    return sounds;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    const auto text = fuzz::textOf(data, size);
    const auto object = json::parse(text, nullptr, /*allow_exceptions=*/false);
    const auto expected = manifestOf(object);
    const auto manifest = parseManifest(text);
    if (manifest)
        require(manifest == expected, "an accepted manifest says what its JSON says");
    else if (expected) // A repeated member may be of a wrong type; dump() repeats none.
        require(parseManifest(object.dump()) == expected, "no valid manifest is refused");

    const auto press = soundsOf(manifest ? manifest->press : Manifest::SoundNames());
    const auto release = soundsOf(manifest ? manifest->release : Manifest::SoundNames());
    if (!press || !release)
        return 0;
    fuzz::write(folder.path() / "pack.json", text);
    for (const bool isCustom : {false, true}) {
        const auto pack = SoundPack::load(folder.path(), isCustom);
        require(pack.has_value() == manifest.has_value(), "a folder with a manifest is a pack");
        require(!pack || pack->id == (isCustom ? "custom:" : "") + manifest->id, "its id");
        require(!pack || (pack->press == *press && pack->release == *release), "its sounds");
        require(!pack || !isCustom || pack->category == PackCategory::custom, "its category");
    }
    return 0;
}
