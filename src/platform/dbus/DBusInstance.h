// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <memory>

namespace clavo
{

/// The owner of the application's name on the session's bus. Other programs can also request the
/// panel, as they can any application's window.
[[nodiscard]] std::unique_ptr<Instance> makeDBusInstance();

} // namespace clavo
