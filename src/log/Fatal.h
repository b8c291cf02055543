// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// Writes the message to the standard error and aborts. For broken preconditions only.
[[noreturn]] void fatal(std::string_view message);

/// The same, after an error in the log and on the standard error that names the cause for the user.
[[noreturn]] void fatal(std::string_view message, std::string_view cause);

} // namespace clavo
