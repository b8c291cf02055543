// SPDX-License-Identifier: MIT
#include "log/Fatal.h"

#include "log/Log.h"

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

void fatal(std::string_view message, std::string_view cause)
{
    log::writeErrorEverywhere(cause);
    fatal(message);
}

} // namespace clavo
