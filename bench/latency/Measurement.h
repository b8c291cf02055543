// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"

#include <functional>
#include <memory>
#include <span>

namespace clavo::latency
{

/// Carries out a command line that begins with the program's name: types on the keyboard, records,
/// and prints the figures. The exit status is 0 if every key was heard, 2 if the command line is
/// wrong, 3 if a sound is missing and the recording has gaps, and 1 otherwise.
[[nodiscard]] int measure(std::span<char* const> commandLine,
                          const std::function<std::unique_ptr<Keyboard>()>& openKeyboard);

} // namespace clavo::latency
