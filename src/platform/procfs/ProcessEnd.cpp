// SPDX-License-Identifier: MIT
#include "platform/procfs/ProcessEnd.h"

#include <sys/syscall.h>

#include <utility>

namespace clavo
{

ProcessEnd::ProcessEnd(pid_t process, std::function<void()> ended)
    : m_process(static_cast<int>(::syscall(SYS_pidfd_open, process, 0))), m_ended(std::move(ended)),
      m_readable(QSocketNotifier::Read)
{
    if (!isWaiting())
        return;
    QObject::connect(&m_readable, &QSocketNotifier::activated, &m_readable,
                     [this] { m_readable.setEnabled(false); });
    // Queued, since the receiver may destroy the notifier.
    QObject::connect(
        &m_readable, &QSocketNotifier::activated, &m_readable,
        [this] { std::exchange(m_ended, nullptr)(); }, Qt::QueuedConnection);
    m_readable.setSocket(m_process.number());
    m_readable.setEnabled(true);
}

} // namespace clavo
