// SPDX-License-Identifier: MIT
#include "ui/ChartScale.h"

#include <algorithm>

namespace clavo
{
namespace
{

constexpr std::int64_t mostSteps = 4;

/// The number of steps up to the value; the division before the addition keeps it from overflowing.
std::int64_t stepsUpTo(std::int64_t value, std::int64_t step)
{
    return value / step + (value % step == 0 ? 0 : 1);
}

} // namespace

ChartScale chartScale(std::int64_t greatest)
{
    // The scale of a larger value may not fit 64 bits.
    constexpr std::int64_t greatestOfAScale = 1'000'000'000'000'000'000;
    const auto value = std::clamp<std::int64_t>(greatest, 1, greatestOfAScale);
    for (std::int64_t power = 1;; power *= 10) {
        for (const std::int64_t factor : {1, 2, 5}) {
            const auto step = factor * power;
            if (const auto steps = stepsUpTo(value, step); steps <= mostSteps)
                return {.step = step, .steps = steps};
        }
    }
}

} // namespace clavo
