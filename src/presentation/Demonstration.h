// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"
#include "stats/StatsStore.h"

#include <memory>

namespace clavo
{

// The data that pictures and scenes of the program show.

/// Gives every visible setting a value.
void setDemonstrationSettings(DefaultsStore& store);

/// The last two weeks, today included, of a user who types a lot.
[[nodiscard]] std::unique_ptr<StatsStore> demonstrationStats();

} // namespace clavo
