// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QSocketNotifier>

#include <functional>

#include <sys/types.h>

namespace clavo
{

/// Waits for the end of any process. Thread: main, which runs a Qt event loop.
class ProcessEnd
{
public:
    /// Calls the receiver once, from the main loop, when the process has ended; the receiver may
    /// destroy this. If the process is already gone or cannot be opened, isWaiting() is false.
    ProcessEnd(pid_t process, std::function<void()> ended);

    [[nodiscard]] bool isWaiting() const { return m_process.number() >= 0; }

private:
    Descriptor m_process; // Readable when it has ended.
    std::function<void()> m_ended;
    QSocketNotifier m_readable;
};

} // namespace clavo
