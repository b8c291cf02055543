// SPDX-License-Identifier: MIT
#include "desktop/outputs/OutputFixture.h"

#include "desktop/user/SinkRecorder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace clavo
{
namespace
{

constexpr float tonePeak = 0.5F;
constexpr std::size_t toneFrames = 4410;
constexpr std::size_t tonePeriods = 45; // The last one has only begun.

std::vector<float> tone()
{
    std::vector<float> samples(toneFrames);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = tonePeak * static_cast<float>(
                                    std::sin(2 * std::numbers::pi * static_cast<double>(i) / 100));
    return samples;
}

/// Whether the tone is there in its whole length and as loud as it was played, on the left alone.
/// The silence that a starved server plays in between does not count.
bool isTone(const Recording& heard)
{
    constexpr float audible = 0.05F;
    std::size_t periods = 0;
    bool wasBelow = true;
    for (const auto sample : heard.left) {
        periods += wasBelow && sample > audible ? 1 : 0;
        if (std::abs(sample) > audible)
            wasBelow = sample < 0;
    }
    return periods == tonePeriods && std::abs(std::ranges::max(heard.left) - tonePeak) < 0.01F &&
           std::ranges::max(heard.right) < 0.001F;
}

} // namespace

OutputFixture::OutputFixture() : m_tone(tone()) {}

void OutputFixture::use(std::unique_ptr<AudioOutput> output)
{
    m_output = std::move(output);
    m_output->prepare(m_mixer, [this] {
        if (!m_output->isRunning())
            m_output->start();
    });
    m_output->start();
}

bool OutputFixture::runsOn(const std::string& server)
{
    return EventLoop::until(
        [&] { return m_output->isRunning() && m_output->status().server == server; });
}

bool OutputFixture::isHeardOn(const std::string& sink)
{
    constexpr int attempts = 10;
    constexpr std::size_t longEnough = 44100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const SinkRecorder recorder(sink);
        if (!EventLoop::until([&] { return recorder.frames() > 0; }) ||
            !m_mixer.start(0, {.samples = m_tone, .left = 1, .right = 0}) ||
            !EventLoop::until([&] { return m_mixer.takeFinished().has_value(); }))
            return false;
        const auto end = recorder.frames() + longEnough;
        bool isHeard = false;
        if (EventLoop::until([&] {
                isHeard = isTone(recorder.recording());
                return isHeard || recorder.frames() > end;
            }) &&
            isHeard)
            return true;
    }
    return false;
}

std::string OutputFixture::ask(const std::string& command)
{
    std::string answer;
    struct Closer {
        void operator()(FILE* pipe) const { pclose(pipe); }
    };
    const std::unique_ptr<FILE, Closer> pipe(popen(command.c_str(), "re"));
    std::array<char, 256> text{};
    while (pipe && std::fgets(text.data(), text.size(), pipe.get()))
        answer += text.data();
    return answer;
}

} // namespace clavo
