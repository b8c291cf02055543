// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileManager.h"

#include <memory>

namespace clavo
{

/// The program with which the desktop opens folders.
[[nodiscard]] std::unique_ptr<FileManager> makeQtFileManager();

} // namespace clavo
