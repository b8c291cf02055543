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

/// A lock-free first-in first-out queue for values that pass between the main thread and the audio
/// thread. All `Capacity` places are usable.
///
/// Thread: one thread calls push() and one calls pop(), possibly the same. What the pushing thread
/// wrote before a push is visible to the popping thread after that value's pop.
template <typename T, std::size_t Capacity> class SpscQueue
{
    static_assert(std::is_trivially_copyable_v<T>);
    static_assert(std::has_single_bit(Capacity), "places are found by masking the count");
    static_assert(std::atomic<std::size_t>::is_always_lock_free);

public:
    /// False, without any effect, when the queue is full.
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
    // Each count is written by one thread and has its own cache line, to avoid false sharing.
    static constexpr std::size_t cacheLine = 64;

    alignas(cacheLine) std::atomic<std::size_t> m_pushed = 0; // Never reset; may wrap around.
    alignas(cacheLine) std::atomic<std::size_t> m_popped = 0;
    alignas(cacheLine) std::array<T, Capacity> m_places{};
};

} // namespace clavo
