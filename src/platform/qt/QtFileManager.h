// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileManager.h"

#include <memory>

namespace clavo
{

/// What the desktop opens folders with.
[[nodiscard]] std::unique_ptr<FileManager> makeQtFileManager();

} // namespace clavo
