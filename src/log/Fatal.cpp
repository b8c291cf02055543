// SPDX-License-Identifier: MIT
#include "log/Fatal.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace clavo
{

void fatal(std::string_view message)
{
    std::fputs(fmt::format("clavo: fatal error: {}\n", message).c_str(), stderr);
    std::abort();
}

} // namespace clavo
