// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace clavo
{

/// A main queue whose time passes only when the test says so. Tasks run in the order of their
/// deadlines, equal ones in the order they came.
class SimulatedTime
{
public:
    using milliseconds = std::chrono::milliseconds;

    void runLater(milliseconds delay, std::function<void()> task)
    {
        const auto deadline = m_now + delay;
        const auto later = std::ranges::upper_bound(m_tasks, deadline, {}, &Task::deadline);
        m_tasks.insert(later, {deadline, std::move(task)});
    }

    /// Lets time pass, running what falls due on the way, tasks scheduled by tasks included.
    void advance(milliseconds duration)
    {
        const auto end = m_now + duration;
        while (!m_tasks.empty() && m_tasks.front().deadline <= end) {
            const Task task = std::move(m_tasks.front());
            m_tasks.erase(m_tasks.begin());
            m_now = task.deadline;
            task.run();
        }
        m_now = end;
    }

    [[nodiscard]] milliseconds now() const { return m_now; }
    [[nodiscard]] std::size_t waiting() const { return m_tasks.size(); }

    /// When the waiting tasks are due, the next one first.
    [[nodiscard]] std::vector<milliseconds> deadlines() const
    {
        std::vector<milliseconds> result;
        for (const Task& task : m_tasks)
            result.push_back(task.deadline);
        return result;
    }

private:
    struct Task {
        milliseconds deadline;
        std::function<void()> run;
    };

    milliseconds m_now{0};
    std::vector<Task> m_tasks; // By deadline.
};

} // namespace clavo
