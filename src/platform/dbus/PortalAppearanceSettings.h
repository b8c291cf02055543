// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"

#include <memory>

namespace clavo
{

/// The settings that the desktop portal reports, on any desktop.
[[nodiscard]] std::unique_ptr<AppearanceSettings> makePortalAppearanceSettings();

} // namespace clavo
