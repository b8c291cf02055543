// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace clavo
{

/// Ends the program: writes the message to the standard error and aborts. For broken promises only.
[[noreturn]] void fatal(std::string_view message);

} // namespace clavo
