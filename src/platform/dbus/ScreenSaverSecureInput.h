// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>

namespace clavo
{

/// The desktop's screen saver, by the names that the desktops have given it: secure while one is
/// active. One that leaves the bus is not active.
[[nodiscard]] std::unique_ptr<ObservableSecureInput> makeScreenSaverSecureInput();

} // namespace clavo
