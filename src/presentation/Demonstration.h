// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"
#include "app/DefaultsStore.h"
#include "stats/StatsStore.h"

#include <memory>

namespace clavo
{

// What the program shows of itself when it is shown to somebody.

/// Gives every setting that is seen its value.
void setDemonstrationSettings(DefaultsStore& store);

/// Two weeks of somebody who types a lot, up to today.
[[nodiscard]] std::unique_ptr<StatsStore> demonstrationStats();

/// The look of pictures, whatever desktop they are made on.
[[nodiscard]] std::unique_ptr<AppearanceSettings> demonstrationLook();

} // namespace clavo
