// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// Writes the message to the standard error and aborts. For broken preconditions only.
[[noreturn]] void fatal(std::string_view message);

} // namespace clavo
