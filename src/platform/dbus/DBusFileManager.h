// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileManager.h"

#include <memory>

namespace clavo
{

/// The file manager of the session's bus, which starts it if it does not run. The fallback shows a
/// folder if no file manager on the bus does.
[[nodiscard]] std::unique_ptr<FileManager>
makeDBusFileManager(std::unique_ptr<FileManager> fallback);

} // namespace clavo
