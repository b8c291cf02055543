// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace clavo
{

class Mixer;

/// What an output reports about itself.
struct OutputStatus {
    std::string server;              // "PipeWire", "PulseAudio", …; empty while there is none.
    std::uint32_t quantumFrames = 0; // Frames per granted period; 0 while unknown.
    std::uint32_t sampleRate = 0;    // Of the granted period, not of the stream.
    // The servers that are looked for, best first, and one of them that answers and has not asked
    // for a period: it has no device.
    std::vector<std::string> searched = {};
    std::string waitingFor = {};
};

/// Plays what the mixer renders: one stereo stream at 44,100 frames per second, on the default
/// device.
///
/// prepare() is called first and once. start() asks the output to run and returns at once. From
/// then on isRunning() is true while a sound passed to the mixer will be heard within moments. A
/// lost server makes it false, and the output recovers by itself. `configurationChanged` is called
/// on the main thread after every loss, return and change of device or period, never from inside
/// another call and never because of start() or pause(). A loss is reported before isRunning() is
/// true again.
///
/// pause() stops rendering and lets the device sleep until the next start(), even if the server is
/// lost and returns. After pause() neither render() nor `configurationChanged` is running or
/// called, and the mixer may be destroyed. An output that does not run may be paused.
///
/// status() describes the server in use; while paused, the connected server that the next start()
/// uses. A lost server is not reported. Thread: main; the mixer's render() is called on the
/// output's own audio thread.
class AudioOutput
{
public:
    virtual ~AudioOutput() = default;

    virtual void prepare(Mixer& mixer, std::function<void()> configurationChanged) = 0;
    virtual void start() = 0;
    virtual void pause() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;
    [[nodiscard]] virtual OutputStatus status() const = 0;
};

} // namespace clavo
