// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace clavo
{

/// What was heard: two channels at 44,100 frames per second.
struct Recording {
    std::vector<float> left;
    std::vector<float> right;
};

/// Records what a sink plays, from its construction on, on a thread of its own.
class SinkRecorder
{
public:
    explicit SinkRecorder(const std::string& sink);

    [[nodiscard]] Recording recording() const;
    [[nodiscard]] std::size_t frames() const;

private:
    void record(const std::stop_token& stop, const std::string& source);

    mutable std::mutex m_mutex;
    Recording m_recording;
    std::jthread m_thread;
};

} // namespace clavo
