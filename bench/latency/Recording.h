// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace clavo::latency
{

/// A point of the monotonic clock, which the graph's own times are also points of.
using Moment = std::chrono::steady_clock::time_point;
using std::chrono::nanoseconds;

/// One period of the graph as a stream saw it.
struct Cycle {
    Moment start;               // The period's time, the same for every stream in the graph.
    std::uint64_t position = 0; // Of the period in the graph, in frames.
    std::size_t firstFrame = 0; // Of the recording.
    std::uint32_t frames = 0;
};

/// What a sink played, with the time of every frame.
struct Recording {
    std::uint32_t rate = 48000;
    std::uint32_t cyclesLate = 0; // Frames recorded in one cycle were played this many before it.
    std::vector<float> samples;   // Stereo, interleaved.
    std::vector<Cycle> cycles;

    [[nodiscard]] std::size_t frames() const { return samples.size() / 2; }

    /// When the frame was played. There is at least one cycle.
    [[nodiscard]] Moment timeOf(std::size_t frame) const;

    /// The first frame that was played at this time or after; frames() when none was.
    [[nodiscard]] std::size_t frameAt(Moment moment) const;

    /// The larger absolute value of the two channels.
    [[nodiscard]] float level(std::size_t frame) const;

    /// The highest level of frames from first up to last, which does not count; 0 for none.
    [[nodiscard]] float peak(std::size_t first, std::size_t last) const;

    /// How often since then the graph went on without the recording stream.
    [[nodiscard]] std::size_t gaps(Moment since) const;
};

/// Writes 32-bit float samples; false when the file cannot be written.
[[nodiscard]] bool writeWav(const std::filesystem::path& file, const Recording& recording);

} // namespace clavo::latency
