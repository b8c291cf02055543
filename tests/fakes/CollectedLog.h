// SPDX-License-Identifier: MIT
#pragma once

#include "log/Log.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace clavo
{

/// What is logged during its life, from the level notice on unless the test sets another. There is
/// one at a time, because the log's sink is a plain function.
class CollectedLog
{
public:
    using Entry = std::pair<log::Level, std::string>;

    CollectedLog()
    {
        clear();
        log::setThreshold(log::Level::notice);
        log::setSink([](log::Level level, std::string_view line) {
            collectedLines.emplace_back(line);
            collectedEntries.emplace_back(level, line);
        });
    }
    ~CollectedLog() { log::setSink(&log::writeToStandardError); }
    CollectedLog(const CollectedLog&) = delete;
    CollectedLog& operator=(const CollectedLog&) = delete;

    [[nodiscard]] static const std::vector<std::string>& lines() { return collectedLines; }
    /// The lines with their levels.
    [[nodiscard]] static const std::vector<Entry>& entries() { return collectedEntries; }

    static void clear()
    {
        collectedLines.clear();
        collectedEntries.clear();
    }

private:
    inline static std::vector<std::string> collectedLines;
    inline static std::vector<Entry> collectedEntries;
};

} // namespace clavo
