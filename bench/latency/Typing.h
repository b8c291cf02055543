// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"
#include "latency/Recording.h"

#include <cstddef>
#include <cstdint>
#include <string>
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
    std::vector<Moment> all; // With the releases if those sound too.
};

/// This many of the letters, the same ones every time.
std::string randomText(std::size_t count);

/// Presses the key of each character at uneven intervals of 40 to 60 ms, the same every time, for a
/// pack without sounds for releases. The keyboard must have a key for each character.
Sent pressKeys(Keyboard& keyboard, std::string_view text);

/// Types the text as people do, in about six characters a second.
Sent typeText(Keyboard& keyboard, std::string_view text);

/// Sends presses and releases in turn at a steady rate.
void sendEvents(Keyboard& keyboard, std::size_t count, nanoseconds spacing);

} // namespace clavo::latency
