// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QSocketNotifier>

#include <functional>

#include <sys/types.h>

namespace clavo
{

/// Waits for the end of a process, whoever started it. Thread: main, which runs a Qt event loop.
class ProcessEnd
{
public:
    /// Calls the receiver once, from the main loop, where the process has ended; the receiver may
    /// destroy this. For a process that is no more, or not to be had, see isWaiting().
    ProcessEnd(pid_t process, std::function<void()> ended);

    /// False where there was nothing to wait for.
    [[nodiscard]] bool isWaiting() const { return m_process.number() >= 0; }

private:
    Descriptor m_process; // Readable when it has ended.
    std::function<void()> m_ended;
    QSocketNotifier m_readable;
};

} // namespace clavo
