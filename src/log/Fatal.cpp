// SPDX-License-Identifier: MIT
#include "log/Fatal.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace clavo
{

void fatal(std::string_view message)
{
    fmt::print(stderr, "clavo: fatal error: {}\n", message);
    std::fflush(stderr);
    std::abort();
}

} // namespace clavo
