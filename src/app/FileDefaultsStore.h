// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <memory>

namespace clavo
{

/// The settings in one JSON file, replaced whole at every change. Members that this version does
/// not know are kept.
///
/// A file that is no JSON object is set aside as NAME.broken with one log line, and the defaults
/// apply.
class FileDefaultsStore : public DefaultsStore
{
public:
    /// Whether changes reach the file, or last as long as the store and leave the file alone, even
    /// one that is to be set aside.
    enum class Changes { written, forgotten };

    /// Reads the file, which need not exist yet; nor need its folder.
    explicit FileDefaultsStore(std::filesystem::path file, Changes changes = Changes::written);
    ~FileDefaultsStore() override;

    void registerDefaults(std::map<std::string, DefaultsValue, std::less<>> defaults) override;
    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void setValue(std::string_view key, DefaultsValue value) override;
    void removeValue(std::string_view key) override;

private:
    void write() const;

    std::filesystem::path m_file;
    Changes m_changes;
    std::map<std::string, DefaultsValue, std::less<>> m_defaults;
    std::unique_ptr<nlohmann::json> m_stored;
};

} // namespace clavo
