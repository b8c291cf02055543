// SPDX-License-Identifier: MIT
#include "platform/none/SilentOutput.h"

#include "audio/realtime/Mixer.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>

namespace clavo
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t blockFrames = 882;
constexpr std::chrono::milliseconds blockDuration{20}; // 882 frames at 44,100 per second.

class SilentOutput final : public AudioOutput
{
public:
    SilentOutput() = default;
    ~SilentOutput() override { pause(); }
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;

    void prepare(Mixer& mixer, std::function<void()> /*configurationChanged*/) override
    {
        m_mixer = &mixer;
    }

    void start() override
    {
        if (isRunning())
            return;
        m_isEnding = false;
        m_thread = std::thread([this] { render(); });
    }

    /// Waits for the block that is being rendered.
    void pause() override
    {
        if (!isRunning())
            return;
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_ending.notify_one();
        m_thread.join();
    }

    [[nodiscard]] bool isRunning() const override { return m_thread.joinable(); }
    [[nodiscard]] OutputStatus status() const override { return {}; }

private:
    void render()
    {
        std::array<float, blockFrames> left;
        std::array<float, blockFrames> right;
        std::unique_lock lock(m_mutex);
        auto next = Clock::now();
        do {
            m_mixer->render({.left = left, .right = right});
            next += blockDuration;
        } while (!m_ending.wait_until(lock, next, [this] { return m_isEnding; }));
    }

    Mixer* m_mixer = nullptr;
    std::mutex m_mutex;
    std::condition_variable m_ending;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace

std::unique_ptr<AudioOutput> makeSilentOutput()
{
    return std::make_unique<SilentOutput>();
}

} // namespace clavo
