// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace clavo
{

/// The calls to the allocator and to anything that may block which the calling thread makes while
/// the action runs, by name. The program that links CountedCalls.cpp has them all pass through it.
[[nodiscard]] std::vector<std::string> callsMadeBy(const std::function<void()>& action);

} // namespace clavo
