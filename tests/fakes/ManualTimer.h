// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/Timer.h"

#include <optional>
#include <utility>

namespace clavo
{

/// A timer whose time comes when the test says so.
class ManualTimer : public Timer
{
public:
    void start(std::chrono::milliseconds delay, std::function<void()> due) override
    {
        m_delay = delay;
        m_due = std::move(due);
    }
    void stop() override { m_delay.reset(); }

    /// The delay of the call to come; nothing when none is.
    [[nodiscard]] std::optional<std::chrono::milliseconds> delay() const { return m_delay; }

    /// Lets the time pass, if the timer runs.
    void elapse()
    {
        if (std::exchange(m_delay, std::nullopt))
            std::exchange(m_due, {})();
    }

private:
    std::optional<std::chrono::milliseconds> m_delay;
    std::function<void()> m_due;
};

} // namespace clavo
