// SPDX-License-Identifier: MIT
#include "app/FileDefaultsStore.h"

#include "files/WholeFile.h"
#include "log/Log.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

namespace clavo
{
namespace
{

using nlohmann::json;

// Far more than all settings need; a larger file is not a settings file.
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

/// The JSON object in the file; nothing when the file holds anything else.
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

class FileDefaultsStore final : public DefaultsStore
{
public:
    FileDefaultsStore(std::filesystem::path file, DefaultsChanges changes)
        : m_file(std::move(file)), m_changes(changes)
    {
        if (m_changes == DefaultsChanges::written)
            removeAbandoned(m_file.parent_path());
        if (!fileExists())
            return;
        if (auto object = readObject(m_file))
            m_stored = std::move(*object);
        else if (m_changes == DefaultsChanges::written)
            static_cast<void>(setFileAside());
    }

    void registerDefaults(std::map<std::string, DefaultsValue, std::less<>> defaults) override
    {
        m_defaults = std::move(defaults);
    }

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override
    {
        const auto standard = m_defaults.find(key);
        auto registered =
            standard == m_defaults.end() ? std::nullopt : std::optional(standard->second);
        const auto member = m_stored.find(key);
        auto stored = member == m_stored.end() ? std::nullopt : fromJson(*member);
        if (!stored || (registered && registered->index() != stored->index()))
            return registered;
        return stored;
    }

    void setValue(std::string_view key, DefaultsValue value) override
    {
        std::visit([&](auto& typed) { m_stored[std::string(key)] = std::move(typed); }, value);
        write(key);
    }

    void removeValue(std::string_view key) override
    {
        const auto member = m_stored.find(key);
        if (member == m_stored.end())
            return;
        m_stored.erase(member);
        write(key);
    }

private:
    [[nodiscard]] bool fileExists() const
    {
        std::error_code error;
        return std::filesystem::exists(m_file, error);
    }

    /// Whether the file is small enough for settings, but the system did not let it be read: for
    /// lack of descriptors, for example.
    [[nodiscard]] bool fileIsOutOfReach() const
    {
        std::error_code error;
        const auto size = std::filesystem::file_size(m_file, error);
        return !error && size <= greatestSize && !readRegularFile(m_file, greatestSize);
    }

    [[nodiscard]] std::error_code setFileAside() const
    {
        const auto error = setAside(m_file);
        if (error)
            log::error("réglages illisibles : {}", error.message());
        else
            log::error("réglages illisibles, mis de côté : {}", log::Private{m_file.native()});
        return error;
    }

    std::error_code writeFile(const json& content) const
    {
        const auto text =
            content.dump(4, ' ', /*ensure_ascii=*/false, json::error_handler_t::replace);
        return replaceFile(m_file, text + '\n', Durability::process);
    }

    /// Adds the changes that are not in the file yet to what it holds now.
    std::error_code updateFile() const
    {
        std::error_code error;
        std::filesystem::create_directories(m_file.parent_path(), error);
        if (!fileExists())
            return writeFile(m_stored);
        auto content = readObject(m_file);
        if (!content && fileIsOutOfReach())
            return std::make_error_code(std::errc::io_error);
        if (!content) {
            error = setFileAside();
            return error ? error : writeFile(m_stored);
        }
        for (const auto& key : m_unwritten) {
            const auto member = m_stored.find(key);
            if (member == m_stored.end())
                content->erase(key);
            else
                (*content)[key] = *member;
        }
        return writeFile(*content);
    }

    // Every change is written at once, without waiting for the disk: that would delay every key
    // pressed while the volume slider is dragged by milliseconds.
    void write(std::string_view changed)
    {
        if (m_changes == DefaultsChanges::forgotten)
            return;
        m_unwritten.emplace(changed);
        if (const auto error = updateFile())
            log::error("réglages non enregistrés : {}", error.message());
        else
            m_unwritten.clear();
    }

    std::filesystem::path m_file;
    DefaultsChanges m_changes;
    std::map<std::string, DefaultsValue, std::less<>> m_defaults;
    json m_stored = json::object();                 // As this process has read and changed it.
    std::set<std::string, std::less<>> m_unwritten; // Members of m_stored, or removed from it.
};

} // namespace

std::unique_ptr<DefaultsStore> makeFileDefaultsStore(std::filesystem::path file,
                                                     DefaultsChanges changes)
{
    return std::make_unique<FileDefaultsStore>(std::move(file), changes);
}

} // namespace clavo
