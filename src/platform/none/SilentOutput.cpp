// SPDX-License-Identifier: MIT
#include "platform/none/SilentOutput.h"

#include "audio/realtime/Mixer.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace clavo
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t blockFrames = 882;
constexpr std::chrono::milliseconds blockDuration{20}; // 882 frames at 44,100 per second.

void renderUntil(const std::stop_token& stop, Mixer& mixer)
{
    std::array<float, blockFrames> left;
    std::array<float, blockFrames> right;
    std::mutex mutex;
    std::condition_variable_any stopped;
    std::unique_lock lock(mutex);
    auto next = Clock::now();
    while (!stop.stop_requested()) {
        mixer.render({.left = left, .right = right});
        next += blockDuration;
        stopped.wait_until(lock, stop, next, [] { return false; });
    }
}

} // namespace

void SilentOutput::prepare(Mixer& mixer, std::function<void()>)
{
    m_mixer = &mixer;
}

void SilentOutput::start()
{
    if (!isRunning())
        m_thread = std::jthread(
            [mixer = m_mixer](const std::stop_token& stop) { renderUntil(stop, *mixer); });
}

void SilentOutput::pause()
{
    m_thread = {}; // Asks the thread to end and waits for it: at most one block's rendering.
}

} // namespace clavo
