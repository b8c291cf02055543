// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace clavo
{

/// The values at which a chart draws its lines: 0, one step, two steps and so on up to the top.
struct ChartScale {
    std::int64_t step = 1; // 1, 2 or 5 of a power of ten.
    std::int64_t steps = 1;

    [[nodiscard]] std::int64_t top() const { return step * steps; }
    bool operator==(const ChartScale&) const = default;
};

/// The scale of at most four steps whose top is the least that is not below the greatest value.
[[nodiscard]] ChartScale chartScale(std::int64_t greatest);

} // namespace clavo
