// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <memory>

namespace clavo
{

/// The owner of the application's name on the session's bus. Other programs can have the panel
/// opened as well, as they can open any application's window.
[[nodiscard]] std::unique_ptr<Instance> makeDBusInstance();

} // namespace clavo
