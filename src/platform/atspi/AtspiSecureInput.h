// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"
#include "time/Timer.h"

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <memory>

namespace clavo::atspi
{

/// Called with the process of every program that gets focus, and with 0 when it loses it.
using FocusReceiver = std::function<void(pid_t)>;

/// How long input stays secure for a program that does not answer.
constexpr std::chrono::milliseconds patience{500};

} // namespace clavo::atspi

namespace clavo
{

/// The focused element, as programs report it on the accessibility bus: secure while it is a
/// password field or part of one.
///
/// Listens to changes of focus and to nothing else, starts no service and leaves the desktop's
/// accessibility settings alone. Programs are asked but never waited for: input is secure until the
/// focused program has said what its element is, or has had the time to. The bus may be absent,
/// come later and go.
[[nodiscard]] std::unique_ptr<ObservableSecureInput>
makeAtspiSecureInput(std::unique_ptr<Timer> timer, atspi::FocusReceiver receiver = {});

} // namespace clavo
