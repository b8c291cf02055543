// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

namespace clavo
{

/// The one sink of a virtual desktop.
inline constexpr const char* desktopSink = "clavo-sink";

/// What was heard: two channels at 44,100 frames per second.
struct Recording {
    std::vector<float> left;
    std::vector<float> right;
};

/// Records what a sink plays, as long as the main loop turns. A process of its own listens, so that
/// nothing but the output under test uses the server's library in this one.
class SinkRecorder
{
public:
    explicit SinkRecorder(const std::string& sink);
    ~SinkRecorder();
    SinkRecorder(const SinkRecorder&) = delete;
    SinkRecorder& operator=(const SinkRecorder&) = delete;

    [[nodiscard]] const Recording& recording() const { return m_recording; }
    [[nodiscard]] std::size_t frames() const { return m_recording.left.size(); }

private:
    struct Frame {
        float left = 0;
        float right = 0;
    };

    void take();

    Recording m_recording;
    std::array<Frame, 441> m_block; // Being read,
    std::size_t m_received = 0;     // and how many bytes of it are there.
    pid_t m_process = 0;
    int m_sound = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace clavo
