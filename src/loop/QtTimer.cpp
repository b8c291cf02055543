// SPDX-License-Identifier: MIT
#include "loop/QtTimer.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <utility>

namespace clavo
{
namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

class QtTimer final : public Timer
{
public:
    QtTimer()
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { wake(); });
    }

    void start(milliseconds delay, std::function<void()> due) override
    {
        m_due = std::move(due);
        m_deadline = Clock::now() + delay;
        // A timer that wakes too early waits again. So postponing the timer at every key registers
        // nothing new with the main loop.
        if (!m_timer.isActive() || m_deadline < m_wakeTime)
            wakeIn(delay);
    }

    void stop() override { m_timer.stop(); }
    [[nodiscard]] bool isRunning() const override { return m_timer.isActive(); }

private:
    void wakeIn(milliseconds delay)
    {
        m_wakeTime = Clock::now() + delay;
        m_timer.start(delay);
    }

    void wake()
    {
        const auto rest = std::chrono::ceil<milliseconds>(m_deadline - Clock::now());
        if (rest > rest.zero())
            wakeIn(rest);
        else
            std::exchange(m_due, {})(); // Moved out first: the call may start the timer again.
    }

    QTimer m_timer;
    Clock::time_point m_wakeTime; // Of m_timer.
    Clock::time_point m_deadline; // Not before m_wakeTime.
    std::function<void()> m_due;
};

} // namespace

std::unique_ptr<Timer> makeQtTimer()
{
    return std::make_unique<QtTimer>();
}

} // namespace clavo
