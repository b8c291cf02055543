// SPDX-License-Identifier: MIT
#include "app/FileDefaultsStore.h"

#include "files/RegularFile.h"
#include "files/WholeFile.h"
#include "log/Log.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

using nlohmann::json;

// Far more than all settings take; a larger file holds something else.
constexpr std::uint64_t greatestSize = 1 << 20;
// So does a deeper one, and writing goes a call deeper with every level: some ten thousand of them
// would use up the stack.
constexpr int greatestDepth = 64;

std::optional<DefaultsValue> fromJson(const json& stored)
{
    if (stored.is_boolean())
        return stored.get<bool>();
    if (stored.is_number())
        return stored.get<double>();
    if (stored.is_string())
        return stored.get<std::string>();
    if (stored.is_array() &&
        std::ranges::all_of(stored, [](const json& e) { return e.is_string(); }))
        return stored.get<std::vector<std::string>>();
    return std::nullopt;
}

/// The file's object; nothing when what is there is not one.
std::optional<json> readObject(const std::filesystem::path& file)
{
    const auto text = readRegularFile(file, greatestSize);
    if (!text)
        return std::nullopt;
    bool isTooDeep = false;
    const auto isKept = [&](int depth, json::parse_event_t, const json&) {
        isTooDeep = isTooDeep || depth > greatestDepth;
        return !isTooDeep;
    };
    auto object = json::parse(*text, isKept, /*allow_exceptions=*/false);
    return object.is_object() && !isTooDeep ? std::optional(std::move(object)) : std::nullopt;
}

} // namespace

FileDefaultsStore::FileDefaultsStore(std::filesystem::path file, Changes changes)
    : m_file(std::move(file)), m_changes(changes), m_stored(std::make_unique<json>(json::object()))
{
    if (m_changes == Changes::written)
        removeAbandoned(m_file.parent_path());
    std::error_code error;
    if (!std::filesystem::exists(m_file, error))
        return;
    if (auto object = readObject(m_file)) {
        *m_stored = std::move(*object);
        return;
    }
    if (m_changes == Changes::forgotten)
        return;
    auto aside = m_file;
    aside += ".broken";
    std::filesystem::rename(m_file, aside, error);
    log::error("réglages illisibles, mis de côté : {}", log::Private{aside.native()});
}

FileDefaultsStore::~FileDefaultsStore() = default;

void FileDefaultsStore::registerDefaults(std::map<std::string, DefaultsValue, std::less<>> defaults)
{
    m_defaults = std::move(defaults);
}

std::optional<DefaultsValue> FileDefaultsStore::value(std::string_view key) const
{
    const auto standard = m_defaults.find(key);
    auto registered = standard == m_defaults.end() ? std::nullopt : std::optional(standard->second);
    const auto member = m_stored->find(key);
    auto stored = member == m_stored->end() ? std::nullopt : fromJson(*member);
    if (!stored || (registered && registered->index() != stored->index()))
        return registered;
    return stored;
}

void FileDefaultsStore::setValue(std::string_view key, DefaultsValue value)
{
    std::visit([&](auto& typed) { (*m_stored)[std::string(key)] = std::move(typed); }, value);
    write();
}

void FileDefaultsStore::removeValue(std::string_view key)
{
    const auto member = m_stored->find(key);
    if (member == m_stored->end())
        return;
    m_stored->erase(member);
    write();
}

// Every change is written at once, but the disk is not waited for: that would cost milliseconds of
// every key that is pressed while the volume slider is dragged.
void FileDefaultsStore::write() const
{
    if (m_changes == Changes::forgotten)
        return;
    std::error_code error;
    std::filesystem::create_directories(m_file.parent_path(), error);
    const auto text =
        m_stored->dump(4, ' ', /*ensure_ascii=*/false, json::error_handler_t::replace);
    error = replaceFile(m_file, text + '\n', Durability::process);
    if (error)
        log::error("réglages non enregistrés : {}", error.message());
}

} // namespace clavo
