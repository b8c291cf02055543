// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"

#include <functional>
#include <memory>
#include <span>

namespace clavo::latency
{

/// Does what a command line, the program's name first, asks for: types on the keyboard, listens,
/// and prints what was found. The exit status: 0 if every key was heard, 2 where the command line
/// is wrong, 3 where a sound is missing and the recording has gaps, else 1.
[[nodiscard]] int measure(std::span<char* const> commandLine,
                          const std::function<std::unique_ptr<Keyboard>()>& openKeyboard);

} // namespace clavo::latency
