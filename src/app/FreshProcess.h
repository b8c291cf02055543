// SPDX-License-Identifier: MIT
#pragma once

#include "app/PermissionWait.h"

#include <filesystem>

namespace clavo
{

/// Asks a newly started process of the executable whether it may listen, from a background thread
/// of low priority. An answer that comes after the main loop's end is dropped.
[[nodiscard]] PermissionWait::Ask askFreshProcess(std::filesystem::path executable);

} // namespace clavo
