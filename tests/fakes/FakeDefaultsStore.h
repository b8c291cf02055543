// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <utility>

namespace clavo
{

/// A store in memory; what was written is there to look at.
class FakeDefaultsStore : public DefaultsStore
{
public:
    using Values = std::map<std::string, DefaultsValue, std::less<>>;

    void registerDefaults(Values defaults) override { registered = std::move(defaults); }

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override
    {
        for (const auto* values : {&written, &registered}) {
            if (const auto found = values->find(key); found != values->end())
                return found->second;
        }
        return std::nullopt;
    }

    void setValue(std::string_view key, DefaultsValue value) override
    {
        written.insert_or_assign(std::string(key), std::move(value));
    }

    void removeValue(std::string_view key) override
    {
        if (const auto found = written.find(key); found != written.end())
            written.erase(found);
    }

    Values registered;
    Values written;
};

} // namespace clavo
