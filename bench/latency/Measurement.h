// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"
#include "latency/Options.h"

namespace clavo::latency
{

/// Types on the keyboard, listens, and prints what was found. The exit status: 0 if every key was
/// heard, 3 where a sound is missing and the recording has gaps.
[[nodiscard]] int measure(const Options& options, Keyboard& keyboard);

} // namespace clavo::latency
