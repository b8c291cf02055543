// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace clavo::latency
{

/// The periods that one node was not ready with when the next one began.
struct Missed {
    std::string node;
    std::size_t asleep = 0; // Its program had not yet been given a processor,
    std::size_t atWork = 0; // or had not yet finished.
};

} // namespace clavo::latency
