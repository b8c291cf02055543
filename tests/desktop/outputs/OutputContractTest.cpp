// SPDX-License-Identifier: MIT
#include "contracts/AudioOutputContract.h"

#include "eventloop/EventLoop.h"
#include "platform/Platform.h"
#include "platform/pipewire/PipeWireOutput.h"
#include "platform/pulse/PulseOutput.h"

#include <QDeadlineTimer>

namespace clavo
{
namespace
{

/// On the server of the virtual desktop.
struct DesktopHost {
    static bool until(const std::function<bool()>& isFulfilled)
    {
        return EventLoop::until(isFulfilled);
    }

    static bool isThere(const AudioOutput& output)
    {
        return output.isRunning() && !output.status().server.empty();
    }

    static void goOn()
    {
        for (const QDeadlineTimer end(1); !end.hasExpired();)
            QCoreApplication::processEvents();
    }

    EventLoop eventLoop;
};

struct PipeWireHost : DesktopHost {
    static std::unique_ptr<AudioOutput> make() { return makePipeWireOutput(128); }
};

struct PulseHost : DesktopHost {
    static std::unique_ptr<AudioOutput> make() { return makePulseOutput(128); }
};

/// What the program plays through: whatever this desktop has.
struct ProgramHost : DesktopHost {
    static std::unique_ptr<AudioOutput> make() { return makeAudioOutput(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(PipeWire, AudioOutputContract, PipeWireHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Pulse, AudioOutputContract, PulseHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Program, AudioOutputContract, ProgramHost);

} // namespace
} // namespace clavo
