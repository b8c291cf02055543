// SPDX-License-Identifier: MIT
#include "stats/StatsSurroundings.h"

#include <QThread>
#include <QTimer>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace clavo
{
namespace
{

/// Runs tasks one after the other. Its end waits for those it was given.
class BackgroundThread
{
public:
    BackgroundThread() : m_thread([this](const std::stop_token& end) { runTasks(end); }) {}

    void run(std::function<void()> task)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_tasks.push_back(std::move(task));
        }
        m_taskCame.notify_one();
    }

private:
    void runTasks(const std::stop_token& end)
    {
        // The only priority below the normal one that Linux knows for a thread.
        QThread::currentThread()->setPriority(QThread::IdlePriority);
        std::unique_lock lock(m_mutex);
        while (m_taskCame.wait(lock, end, [this] { return !m_tasks.empty(); })) {
            const auto task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            task();
            lock.lock();
        }
    }

    std::mutex m_mutex;
    std::condition_variable_any m_taskCame;
    std::deque<std::function<void()>> m_tasks;
    std::jthread m_thread; // Last: it uses the others.
};

} // namespace

StatsSurroundings::RunInBackground StatsSurroundings::oneThread()
{
    return [thread = std::make_shared<BackgroundThread>()](std::function<void()> task) {
        thread->run(std::move(task));
    };
}

void StatsSurroundings::runOnMainThread(std::chrono::milliseconds delay, std::function<void()> task)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(task));
}

} // namespace clavo
