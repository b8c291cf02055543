// SPDX-License-Identifier: MIT
#pragma once

#include "time/Timer.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace clavo
{

/// Timers whose time passes only when the test says so. They call back in the order of their
/// deadlines, those with equal ones in the order they were started. It must outlive its timers.
class SimulatedTime
{
public:
    using milliseconds = std::chrono::milliseconds;

    SimulatedTime() = default;
    SimulatedTime(const SimulatedTime&) = delete;
    SimulatedTime& operator=(const SimulatedTime&) = delete;

    [[nodiscard]] std::unique_ptr<Timer> makeTimer()
    {
        return std::make_unique<SimulatedTimer>(*this);
    }

    /// Lets time pass and makes the calls that fall due, those of timers that they start included.
    void advance(milliseconds duration)
    {
        const auto end = m_now + duration;
        while (!m_calls.empty() && m_calls.front().deadline <= end)
            makeNextCall();
        m_now = end;
    }
    /// Lets time pass until the next call, which there is, and makes that one alone.
    void makeNextCall()
    {
        const Call call = std::move(m_calls.front());
        m_calls.erase(m_calls.begin());
        m_now = call.deadline;
        call.due();
    }
    /// Lets time pass until the next call, if there is one.
    void elapse() { advance(untilNext().value_or(milliseconds(0))); }

    [[nodiscard]] milliseconds now() const { return m_now; }
    /// The time until the next call; nothing when no timer runs.
    [[nodiscard]] std::optional<milliseconds> untilNext() const
    {
        if (m_calls.empty())
            return std::nullopt;
        return m_calls.front().deadline - m_now;
    }
    /// The number of running timers.
    [[nodiscard]] std::size_t waiting() const { return m_calls.size(); }
    /// Those of the running timers, the next one first.
    [[nodiscard]] std::vector<milliseconds> deadlines() const
    {
        std::vector<milliseconds> result;
        for (const Call& call : m_calls)
            result.push_back(call.deadline);
        return result;
    }

private:
    class SimulatedTimer final : public Timer
    {
    public:
        explicit SimulatedTimer(SimulatedTime& time) : m_time(time) {}
        ~SimulatedTimer() override { m_time.drop(this); }
        SimulatedTimer(const SimulatedTimer&) = delete;
        SimulatedTimer& operator=(const SimulatedTimer&) = delete;

        void start(milliseconds delay, std::function<void()> due) override
        {
            m_time.drop(this);
            m_time.add({m_time.now() + delay, this, std::move(due)});
        }
        void stop() override { m_time.drop(this); }
        [[nodiscard]] bool isRunning() const override { return m_time.has(this); }

    private:
        SimulatedTime& m_time;
    };

    struct Call {
        milliseconds deadline;
        const Timer* timer;
        std::function<void()> due;
    };

    void add(Call call)
    {
        const auto later = std::ranges::upper_bound(m_calls, call.deadline, {}, &Call::deadline);
        m_calls.insert(later, std::move(call));
    }
    void drop(const Timer* timer)
    {
        std::erase_if(m_calls, [timer](const Call& call) { return call.timer == timer; });
    }
    [[nodiscard]] bool has(const Timer* timer) const
    {
        return std::ranges::find(m_calls, timer, &Call::timer) != m_calls.end();
    }

    milliseconds m_now{0};
    std::vector<Call> m_calls; // By deadline, at most one of each timer.
};

} // namespace clavo
