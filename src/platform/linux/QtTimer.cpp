// SPDX-License-Identifier: MIT
#include "platform/linux/QtTimer.h"

#include <utility>

namespace clavo
{

QtTimer::QtTimer()
{
    m_timer.setSingleShot(true);
    // Moved out first: what is due may start the timer again.
    m_timer.callOnTimeout([this] { std::exchange(m_due, {})(); });
}

void QtTimer::start(std::chrono::milliseconds delay, std::function<void()> due)
{
    m_due = std::move(due);
    m_timer.start(delay);
}

} // namespace clavo
