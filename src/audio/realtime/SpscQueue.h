// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <optional>
#include <type_traits>

namespace clavo
{

/// The one way values travel between the main thread and the audio thread: first in, first out,
/// never blocking. All `Capacity` places are usable.
///
/// Thread: push() belongs to one thread, pop() to one thread, which may be the same. What the
/// pusher wrote before a push is visible to whoever pops that value.
template <typename T, std::size_t Capacity> class SpscQueue
{
    static_assert(std::is_trivially_copyable_v<T>);
    static_assert(std::has_single_bit(Capacity), "places are found by masking the count");
    static_assert(std::atomic<std::size_t>::is_always_lock_free);

public:
    /// False when the queue is full; the value is not taken then.
    [[nodiscard]] bool push(const T& value) noexcept CLAVO_NONBLOCKING
    {
        const auto pushed = m_pushed.load(std::memory_order_relaxed);
        if (pushed - m_popped.load(std::memory_order_acquire) == Capacity)
            return false;
        m_places[pushed % Capacity] = value;
        m_pushed.store(pushed + 1, std::memory_order_release);
        return true;
    }

    /// The oldest value; nothing when the queue is empty.
    [[nodiscard]] std::optional<T> pop() noexcept CLAVO_NONBLOCKING
    {
        const auto popped = m_popped.load(std::memory_order_relaxed);
        if (popped == m_pushed.load(std::memory_order_acquire))
            return std::nullopt;
        const T value = m_places[popped % Capacity];
        m_popped.store(popped + 1, std::memory_order_release);
        return value;
    }

private:
    // Each count is written by one thread only; on a cache line of its own it does not slow the
    // other thread down.
    static constexpr std::size_t cacheLine = 64;

    alignas(cacheLine) std::atomic<std::size_t> m_pushed = 0; // Counts for ever; wrapping is fine.
    alignas(cacheLine) std::atomic<std::size_t> m_popped = 0;
    alignas(cacheLine) std::array<T, Capacity> m_places{};
};

} // namespace clavo
