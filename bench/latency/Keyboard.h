// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Recording.h"

#include <cstdint>
#include <optional>

namespace clavo::latency
{

/// A keyboard whose keys are pressed by the program.
class Keyboard
{
public:
    virtual ~Keyboard() = default;

    /// The key that types this character without a modifier; '\n' is Return. Nothing when it has
    /// none.
    [[nodiscard]] virtual std::optional<std::uint8_t> key(char character) const = 0;

    /// Both return the moment just before the event left.
    virtual Moment press(std::uint8_t key) = 0;
    virtual Moment release(std::uint8_t key) = 0;
};

} // namespace clavo::latency
