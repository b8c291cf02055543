// SPDX-License-Identifier: MIT
// The file of the settings.
#include "app/Settings.h"
#include "app/FileDefaultsStore.h"
#include "fakes/TemporaryFolder.h"
#include "fuzz/Input.h"
#include "log/Log.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>

using namespace clavo;
using fuzz::require;
using nlohmann::json;

namespace
{

std::optional<std::string> contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

bool isOfType(const json& value, const DefaultsValue& standard)
{
    return std::holds_alternative<bool>(standard)     ? value.is_boolean()
           : std::holds_alternative<double>(standard) ? value.is_number()
                                                      : value.is_string();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    log::setSink([](log::Level, std::string_view) {});
    const auto file = folder.path() / "settings.json";
    const auto aside = folder.path() / "settings.json.broken";
    std::filesystem::remove(aside);
    const auto text = fuzz::textOf(data, size);
    fuzz::write(file, text);

    const auto store = makeFileDefaultsStore(file);
    int depth = 0;
    const auto isKept = [&depth](int current, json::parse_event_t, const json&) {
        depth = std::max(depth, current);
        return true;
    };
    auto expected = json::parse(text, isKept, /*allow_exceptions=*/false);
    if (expected.is_object() && depth <= 64) {
        require(contentOf(file) == text, "reading changes nothing");
    } else {
        require(contentOf(aside) == text && !contentOf(file), "what is unreadable is set aside");
        expected = json::object();
    }
    const auto settings = readSettings(*store);
    for (const auto& setting : allSettings) {
        const auto standard = valueOf(setting, Settings());
        auto& value = expected[std::string(setting.key)];
        if (!isOfType(value, standard))
            std::visit([&](const auto& typed) { value = typed; }, standard);
        std::visit(
            [&](const auto& read) { require(value == json(read), "a setting or its default"); },
            valueOf(setting, settings));
    }
    writeSettings(*store, settings);
    require(json::parse(contentOf(file).value_or("")) == expected, "what is not known is kept");

    for (const auto& [key, value] : expected.items()) {
        const bool isList = value.is_array() && std::ranges::all_of(value, [](const json& each) {
                                return each.is_string();
                            });
        const bool isValue = value.is_boolean() || value.is_number() || value.is_string() || isList;
        require(store->value(key).has_value() == isValue, "a value has one of four types");
    }
    store->removeValue("packID");
    require(readSettings(*store).packID == Settings().packID, "what is removed has its default");
    return 0;
}
