// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

namespace clavo
{

/// One connection to a sound server with one stereo stream at 44,100 frames per second on it.
/// Opens active and silent. `broken` is final. Thread: main; the mixer's render() is called on the
/// stream's own audio thread.
class ServerStream
{
public:
    enum class State { waiting, streaming, broken };

    virtual ~ServerStream() = default;

    /// Plays this mixer, or silence when null. When the call returns, the mixer played before is no
    /// longer in use.
    virtual void play(Mixer* mixer) = 0;

    /// Asks for periods, or asks for none so that the device may sleep.
    virtual void activate() = 0;
    virtual void deactivate() = 0;

    [[nodiscard]] virtual State state() const = 0;
    [[nodiscard]] virtual OutputStatus status() const = 0;
};

} // namespace clavo
