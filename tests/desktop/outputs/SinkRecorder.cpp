// SPDX-License-Identifier: MIT
#include "desktop/outputs/SinkRecorder.h"

#include <pulse/simple.h>

#include <array>
#include <memory>

namespace clavo
{
namespace
{

struct Frame {
    float left = 0;
    float right = 0;
};

} // namespace

SinkRecorder::SinkRecorder(const std::string& sink)
    : m_thread(
          [this, source = sink + ".monitor"](const std::stop_token& stop) { record(stop, source); })
{
}

Recording SinkRecorder::recording() const
{
    const std::lock_guard lock(m_mutex);
    return m_recording;
}

std::size_t SinkRecorder::frames() const
{
    const std::lock_guard lock(m_mutex);
    return m_recording.left.size();
}

void SinkRecorder::record(const std::stop_token& stop, const std::string& source)
{
    constexpr std::size_t blockFrames = 441;
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    const pa_sample_spec format{.format = PA_SAMPLE_FLOAT32NE, .rate = 44100, .channels = 2};
    const pa_buffer_attr wish{.maxlength = serversChoice,
                              .tlength = serversChoice,
                              .prebuf = serversChoice,
                              .minreq = serversChoice,
                              .fragsize = blockFrames * sizeof(Frame)};
    const std::unique_ptr<pa_simple, decltype(&pa_simple_free)> stream(
        pa_simple_new(nullptr, "SinkRecorder", PA_STREAM_RECORD, source.c_str(), "SinkRecorder",
                      &format, nullptr, &wish, nullptr),
        pa_simple_free);
    if (!stream)
        return;
    std::array<Frame, blockFrames> block;
    while (!stop.stop_requested() &&
           pa_simple_read(stream.get(), block.data(), sizeof block, nullptr) >= 0) {
        const std::lock_guard lock(m_mutex);
        for (const auto& frame : block) {
            m_recording.left.push_back(frame.left);
            m_recording.right.push_back(frame.right);
        }
    }
}

} // namespace clavo
