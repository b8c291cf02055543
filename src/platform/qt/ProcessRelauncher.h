// SPDX-License-Identifier: MIT
#pragma once

#include "app/Relauncher.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// Starts the program as a process of its own, which asks this one to make way for it, outlives it
/// and opens no window. A failure is one log line.
[[nodiscard]] std::unique_ptr<Relauncher> makeProcessRelauncher(std::filesystem::path program);

} // namespace clavo
