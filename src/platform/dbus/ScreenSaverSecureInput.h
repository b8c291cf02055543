// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>

namespace clavo
{

/// The desktop's screen saver, under any of the names that desktops use: secure while one is
/// active. A screen saver that leaves the bus is not active.
[[nodiscard]] std::unique_ptr<ObservableSecureInput> makeScreenSaverSecureInput();

} // namespace clavo
