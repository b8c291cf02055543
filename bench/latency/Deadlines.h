// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Missed.h"

#include <pipewire/pipewire.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace clavo::latency
{

/// Counts missed deadlines by the server's profiler, for every node that waits for no other that
/// missed the same one. Thread: with the loop locked or not running.
class Deadlines
{
public:
    void watch(pw_core* core);
    void stop();

    /// Of the nodes that have missed any since the last call.
    [[nodiscard]] std::vector<Missed> takeMissed() { return std::exchange(m_missed, {}); }

private:
    void bind(std::uint32_t id);
    void count(const spa_pod* profile);
    void countFollower(const spa_pod* follower);

    pw_registry* m_registry = nullptr;
    pw_proxy* m_profiler = nullptr;
    spa_hook m_registryListener = {};
    spa_hook m_profilerListener = {};
    std::vector<Missed> m_missed;
};

} // namespace clavo::latency
