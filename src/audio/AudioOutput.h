// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace clavo
{

class Mixer;

/// What an output reports about itself.
struct OutputStatus {
    std::string server;              // "PipeWire", "PulseAudio", …; empty while there is none.
    std::uint32_t quantumFrames = 0; // Frames per period as granted, 0 while unknown.
    std::uint32_t sampleRate = 0;    // Of the granted period, not of our stream.
};

/// Plays what the mixer renders: one stereo stream at 44,100 frames per second, on the default
/// device.
///
/// prepare() comes first and once. start() asks the output to run and returns at once, whatever
/// comes of it; isRunning() is true from then on as long as a sound handed to the mixer now will be
/// heard within moments. A lost server makes it false, and the output comes back by itself.
/// `configurationChanged` is called on the main thread after every loss, return and change of
/// device or period, never from inside another call and never because of start() or pause(). A loss
/// is reported before isRunning() is true again.
///
/// pause() stops rendering and lets the device sleep until the next start(), across the loss and
/// return of a server too: once it has returned, render() is neither running nor called,
/// `configurationChanged` is not called either, and the mixer may be destroyed. An output that does
/// not run may be paused.
///
/// status() describes the server in use; while paused, the connected one that the next start()
/// plays on. A lost server is not named. Thread: main; the mixer's render() is called on the
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
