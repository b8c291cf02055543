// SPDX-License-Identifier: MIT
#include "eventloop/EventLoop.h"

#include <QDeadlineTimer>
#include <QTimer>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

// Only a failure waits as long: busy and sanitized machines take a multiple of the usual time.
constexpr auto patience = 60s;

} // namespace

bool EventLoop::until(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(patience);
    QTimer poll; // Some conditions change without an event of this process.
    poll.start(5ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace clavo
