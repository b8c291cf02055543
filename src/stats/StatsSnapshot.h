// SPDX-License-Identifier: MIT
#pragma once

#include "stats/DailyCounts.h"

#include <cstdint>

namespace clavo
{

/// The statistics that outlive the program: counts only, nothing of what was typed.
struct StatsSnapshot {
    DailyCounts daily;
    std::int64_t bestWPM = 0; // Words per minute.
    std::int64_t total = 0;   // Keys since the statistics began or were reset.

    bool operator==(const StatsSnapshot&) const = default;
};

} // namespace clavo
