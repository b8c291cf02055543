// SPDX-License-Identifier: MIT
#include "eventloop/EventLoop.h"

#include <QDeadlineTimer>
#include <QTimer>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr auto patience = 60s; // What is waited for is several times slower.
#else
constexpr auto patience = 10s;
#endif

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
