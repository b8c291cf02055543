// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
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
/// value() returns what setValue() stored, now or in an earlier run; the registered default if
/// nothing of the same type is stored; otherwise nothing. Registered defaults are never written.
/// setValue() and removeValue() write the change before they return; a failure is logged by the
/// store, which keeps the value in memory. Thread: main.
class DefaultsStore
{
public:
    virtual ~DefaultsStore() = default;

    virtual void registerDefaults(std::map<std::string, DefaultsValue, std::less<>> defaults) = 0;
    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void setValue(std::string_view key, DefaultsValue value) = 0;
    /// Removes the stored value, if any: value() returns the registered default again.
    virtual void removeValue(std::string_view key) = 0;
};

} // namespace clavo
