// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace clavo
{

using DefaultsValue = std::variant<bool, double, std::string, std::vector<std::string>>;

/// The user's settings by name.
///
/// value() answers with what setValue() stored, now or in an earlier run; with the registered
/// default where nothing of the same type is stored; else with nothing. Registered defaults are
/// never written. setValue() and removeValue() have written the change through when they return; a
/// failure to write is logged by the store and loses nothing in memory. Thread: main.
class DefaultsStore
{
public:
    virtual ~DefaultsStore() = default;

    virtual void registerDefaults(std::map<std::string, DefaultsValue, std::less<>> defaults) = 0;
    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, DefaultsValue value) = 0;
    /// Forgets what is stored under the key, if anything: the registered default answers again.
    virtual void removeValue(std::string_view key) = 0;
};

} // namespace clavo
