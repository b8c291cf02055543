// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/output/ServerBackedOutput.h"
#include "time/Timer.h"

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// One connection to a sound server, with one stereo stream at 44,100 frames per second. Opens
/// active and silent. The state `broken` is final. Thread: main; the mixer's render() is called on
/// the stream's own audio thread.
class ServerStream
{
public:
    enum class State { waiting, streaming, broken };

    virtual ~ServerStream() = default;

    /// Plays this mixer, or silence when null. When the call returns, the previous mixer is no
    /// longer in use.
    virtual void play(Mixer* mixer) = 0;

    // Ask the server for periods, or for none, so that the device may sleep.
    virtual void activate() = 0;
    virtual void deactivate() = 0;

    [[nodiscard]] virtual State state() const = 0;
    [[nodiscard]] virtual OutputStatus status() const = 0;
};

/// Opens a stream, or returns null when there is no server. `changed` is to be called on the main
/// thread, from anywhere, whenever the stream's state or status may have changed.
using OpenServerStream =
    std::function<std::unique_ptr<ServerStream>(std::function<void()> changed)>;

/// How long a running stream may be asked for nothing.
inline constexpr std::chrono::milliseconds streamPatience{500};

/// Plays through a sound server: opens a stream on it and derives the output's link from the
/// stream's state. `read` delays what the library reports in the middle of its calls until they
/// have returned; `stall` measures the patience.
///
/// The link is up from the first period the server asks for. A running stream that is asked for
/// nothing for longer than `streamPatience` (the device is gone and there is no other, or it sleeps
/// too deeply) counts as `pending` and stops rendering: sounds queued for it would all be heard at
/// once when it comes back. Thread: main.
[[nodiscard]] std::unique_ptr<ServerBackedOutput>
makeServerOutput(OpenServerStream open, std::unique_ptr<Timer> read, std::unique_ptr<Timer> stall);

} // namespace clavo
