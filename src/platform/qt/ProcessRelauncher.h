// SPDX-License-Identifier: MIT
#pragma once

#include "app/Relauncher.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// Starts the program as a separate process, which asks this one to quit, outlives it and opens no
/// window. A failure is logged.
[[nodiscard]] std::unique_ptr<Relauncher> makeProcessRelauncher(std::filesystem::path program);

} // namespace clavo
