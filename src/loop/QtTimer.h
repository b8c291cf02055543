// SPDX-License-Identifier: MIT
#pragma once

#include "time/Timer.h"

#include <memory>

namespace clavo
{

/// A timer of the Qt main loop, exact to the millisecond.
[[nodiscard]] std::unique_ptr<Timer> makeQtTimer();

} // namespace clavo
