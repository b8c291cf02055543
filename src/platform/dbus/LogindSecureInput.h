// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"
#include "time/Timer.h"

#include <chrono>
#include <memory>

namespace clavo
{

/// How long a Lock signal counts as locked if LockedHint never follows; many lockers never set the
/// hint.
constexpr std::chrono::milliseconds timeToLock{10'000};

/// The session as logind sees it: secure while it is locked or another one is at the screen.
///
/// Without logind nothing is secure; it may come later.
[[nodiscard]] std::unique_ptr<ObservableSecureInput>
makeLogindSecureInput(std::unique_ptr<Timer> timer);

} // namespace clavo
