// SPDX-License-Identifier: MIT
#include "desktop/x11/EventLoop.h"

#include <QDeadlineTimer>
#include <QTimer>

namespace clavo
{

bool EventLoop::until(const std::function<bool()>& condition)
{
    using namespace std::chrono_literals;

    const QDeadlineTimer deadline(10s);
    QTimer look; // Some conditions change without an event of this process.
    look.start(5ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace clavo
