// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/Timer.h"

#include <QTimer>

namespace clavo
{

/// A timer of the Qt main loop.
class QtTimer final : public Timer
{
public:
    QtTimer();

    void start(std::chrono::milliseconds delay, std::function<void()> due) override;
    void stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
    std::function<void()> m_due;
};

} // namespace clavo
