// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"
#include "latency/Recording.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace clavo::latency
{

/// What the keys pressed by the functions below type.
inline constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz";

/// Presses the key and releases it after this time.
void tap(Keyboard& keyboard, std::uint8_t key, nanoseconds hold);

/// Events whose sounds are looked for, in the order they were sent.
struct Sent {
    std::vector<Moment> presses;
    std::vector<Moment> all; // With the releases, where those sound too.
};

/// Presses this many keys at uneven intervals of 40 to 60 ms, the same every time. Their releases
/// do not sound.
Sent pressKeys(Keyboard& keyboard, std::size_t count);

/// Types the text in about six characters a second. The keyboard has a key for each.
Sent typeText(Keyboard& keyboard, std::string_view text);

/// Sends presses and releases in turn at a steady rate.
void sendEvents(Keyboard& keyboard, std::size_t count, nanoseconds spacing);

} // namespace clavo::latency
