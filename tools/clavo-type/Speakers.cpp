// SPDX-License-Identifier: MIT
#include "clavo-type/Speakers.h"

#include "clavo-type/Typist.h"
#include "synth/AudioBuffer.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <stdexcept>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// Runs the main loop until then.
void waitUntil(steady_clock::time_point moment)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - steady_clock::now());
    if (left <= 0ms)
        return;
    QEventLoop loop;
    // The analyser cannot see that Qt owns the call.
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    QTimer::singleShot(left, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void waitForServer(const AudioOutput& output, std::chrono::milliseconds patience)
{
    const auto deadline = steady_clock::now() + patience;
    while (output.status().server.empty()) {
        if (steady_clock::now() > deadline)
            throw std::runtime_error("no sound server answers; -o FILE writes a file without one");
        waitUntil(steady_clock::now() + 10ms);
    }
}

} // namespace

void play(std::span<const KeyEvent> events, const SoundBank& bank, std::uint64_t seed,
          AudioOutput& output, const std::function<void(std::size_t)>& progress,
          std::chrono::milliseconds patience)
{
    Typist typist(output, bank, seed);
    waitForServer(output, patience);
    const auto start = steady_clock::now() + 100ms; // For the server to begin its first period.
    std::size_t done = 0;
    for (const auto& [time, key] : events) {
        waitUntil(start + time);
        typist.type(key);
        progress(++done);
    }
    const std::chrono::duration<double> ring(static_cast<double>(longestSound(bank)) /
                                             samplesPerSecond);
    waitUntil(steady_clock::now() + std::chrono::duration_cast<steady_clock::duration>(ring) +
              200ms); // For what the server and the device still buffer.
}

} // namespace clavo
