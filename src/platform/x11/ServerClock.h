// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>

namespace clavo
{

/// Converts an X server's times to the steady clock. The server counts milliseconds, from an origin
/// of its own, and wraps after 49 days.
///
/// The event that took the least time to arrive shows how far the clocks are apart. Only the events
/// of the last one or two intervals count, so that clocks that drift or jump are compared anew.
class ServerClock
{
public:
    static constexpr std::chrono::seconds interval{10};

    /// The time of an event with the server's `time` that is read `now`. Not after `now`.
    [[nodiscard]] std::chrono::nanoseconds steadyTime(std::uint32_t time,
                                                      std::chrono::nanoseconds now);

private:
    bool m_hasSeenEvents = false;
    // The least differences of the clocks, in wrapping milliseconds.
    std::uint32_t m_least = 0;           // In this interval.
    std::uint32_t m_leastBefore = 0;     // In the one before.
    std::chrono::nanoseconds m_begin{0}; // Of this interval.
};

} // namespace clavo
