// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Missed.h"
#include "latency/Recording.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace clavo::latency
{

/// A connection to PipeWire that records what the virtual desktop's sink plays.
///
/// Everything is allocated before the first frame arrives. Thread: one, the caller's; PipeWire's
/// own threads stay inside.
class Graph
{
public:
    /// Connects and begins to record, for at most this long. Nothing when PipeWire or the sink
    /// cannot be reached.
    static std::unique_ptr<Graph> open(std::chrono::seconds longest);

    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;
    ~Graph();

    /// The highest level since the last call.
    [[nodiscard]] float takePeak();

    /// The period of the latest cycle, in frames.
    [[nodiscard]] std::uint32_t quantum() const;

    /// The deadlines missed since the last call by the nodes in the graph, this recorder's own
    /// "clavo-latency" among them.
    [[nodiscard]] std::vector<Missed> takeMissedDeadlines();

    /// Plays impulses whose place in the graph is known and measures by how many cycles the
    /// monitor's frames are late. Nothing when too few impulses agree. Call before stop().
    [[nodiscard]] std::optional<std::uint32_t> measureCyclesLate();

    /// Ends the recording and hands it over.
    [[nodiscard]] Recording stop();

private:
    Graph();

    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace clavo::latency
