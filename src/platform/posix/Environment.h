// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <string_view>

namespace clavo
{

/// The value of an environment variable; empty where it is not set.
[[nodiscard]] inline std::string_view environment(const char* name)
{
    const auto* value = std::getenv(name);
    return value ? value : "";
}

} // namespace clavo
