// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace clavo
{

/// Keys pressed on each day, by day key. Days without keys need no entry.
///
/// A copy costs the same however many days there are: copies share the days that are over, which
/// never change, and each has the running day for itself. Only the first key of another day than
/// the last one copies the history.
class DailyCounts
{
public:
    using Entry = std::pair<std::string, std::int64_t>; // Day key, keys.

    DailyCounts() = default;
    explicit DailyCounts(const std::map<std::string, std::int64_t>& counts);

    /// Counts one key on the day, which becomes the running one.
    void increment(const std::string& day);

    /// Keys on the day; 0 where it has no entry.
    [[nodiscard]] std::int64_t count(std::string_view day) const;
    /// All days, in the order of their keys.
    [[nodiscard]] std::vector<Entry> entries() const;

    friend bool operator==(const DailyCounts& a, const DailyCounts& b)
    {
        return a.entries() == b.entries();
    }

private:
    using Entries = std::vector<Entry>; // In the order of their keys.

    std::shared_ptr<const Entries> m_past = std::make_shared<const Entries>();
    std::optional<Entry> m_running; // Stands before an entry of the past with the same key.
};

} // namespace clavo
