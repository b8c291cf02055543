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

/// The session as logind sees it: secure while it is locked or another session is on
/// the screen.
///
/// Without logind nothing is secure. logind may start later.
[[nodiscard]] std::unique_ptr<ObservableSecureInput>
makeLogindSecureInput(std::unique_ptr<Timer> timer);

} // namespace clavo
