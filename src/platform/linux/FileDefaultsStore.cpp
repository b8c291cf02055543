// SPDX-License-Identifier: MIT
#include "platform/linux/FileDefaultsStore.h"

#include "log/Log.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

using nlohmann::json;

// Room for every setting there will be; a larger file is none of ours.
constexpr std::uintmax_t greatestSize = 1 << 20;

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
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) ||
        std::filesystem::file_size(file, error) > greatestSize)
        return std::nullopt;
    std::ifstream stream(file);
    auto object = json::parse(stream, nullptr, /*allow_exceptions=*/false);
    if (!object.is_object())
        return std::nullopt;
    return object;
}

} // namespace

FileDefaultsStore::FileDefaultsStore(std::filesystem::path file, Changes changes)
    : m_file(std::move(file)), m_changes(changes), m_stored(std::make_unique<json>(json::object()))
{
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

// Replaces the file by renaming, so that a reader and a killed process meet either the old settings
// or the new. There is no fsync: it would cost milliseconds of every key that falls into a drag of
// the volume slider.
void FileDefaultsStore::write() const
{
    if (m_changes == Changes::forgotten)
        return;
    std::error_code error;
    std::filesystem::create_directories(m_file.parent_path(), error);
    auto next = m_file;
    next += ".new";
    std::ofstream stream(next, std::ios::trunc);
    stream << m_stored->dump(4, ' ', /*ensure_ascii=*/false, json::error_handler_t::replace)
           << '\n';
    stream.close();
    if (stream)
        std::filesystem::rename(next, m_file, error);
    if (!stream || error)
        log::error("réglages non enregistrés : {}",
                   error ? error.message() : "écriture impossible");
}

} // namespace clavo
