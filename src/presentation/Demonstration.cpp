// SPDX-License-Identifier: MIT
#include "presentation/Demonstration.h"

#include "app/Settings.h"

#include <cstdint>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::int64_t bestWPM = 92;

} // namespace

void setDemonstrationSettings(DefaultsStore& store)
{
    writeSettings(store, {.volume = 0.75, .packID = "nk-cream"});
}

std::unique_ptr<StatsStore> demonstrationStats()
{
    const std::vector<std::int64_t> days{3120, 4380, 2950, 5210, 6040, 4770, 3890,
                                         5620, 7180, 6350, 4810, 5290, 6930, 5284};
    return std::make_unique<StatsStore>(days, bestWPM);
}
} // namespace clavo
