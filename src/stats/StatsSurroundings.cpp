// SPDX-License-Identifier: MIT
#include "stats/StatsSurroundings.h"

#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include <memory>
#include <utility>

namespace clavo
{

StatsSurroundings::RunInBackground StatsSurroundings::oneThread()
{
    auto pool = std::make_shared<QThreadPool>();
    pool->setMaxThreadCount(1);
    // The only priority below the normal one that Linux knows for a thread.
    pool->setThreadPriority(QThread::IdlePriority);
    return [pool = std::move(pool)](std::function<void()> task) { pool->start(std::move(task)); };
}

void StatsSurroundings::runOnMainThread(std::chrono::milliseconds delay, std::function<void()> task)
{
    // The analyser cannot see that Qt owns the task.
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(task));
}

} // namespace clavo
