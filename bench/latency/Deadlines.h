// SPDX-License-Identifier: MIT
#pragma once

#include <pipewire/pipewire.h>

#include <atomic>
#include <cstddef>

namespace clavo::latency
{

/// Counts, by the server's profiler, the cycles in which a program's node was not ready in time.
/// Thread: watch() and stop() with the loop locked or not running; missed() any.
class Deadlines
{
public:
    void watch(pw_core* core);
    void stop();

    [[nodiscard]] std::size_t missed() const { return m_missed; }

private:
    void bind(std::uint32_t id);
    void count(const spa_pod* profile);

    pw_registry* m_registry = nullptr;
    pw_proxy* m_profiler = nullptr;
    spa_hook m_registryListener = {};
    spa_hook m_profilerListener = {};
    std::atomic<std::size_t> m_missed = 0;
};

} // namespace clavo::latency
