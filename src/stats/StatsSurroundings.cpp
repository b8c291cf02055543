// SPDX-License-Identifier: MIT
#include "stats/StatsSurroundings.h"

#include <QThreadPool>

#include <memory>
#include <utility>

namespace clavo
{

StatsSurroundings::RunInBackground StatsSurroundings::oneThread()
{
    auto pool = std::make_shared<QThreadPool>();
    pool->setMaxThreadCount(1);
    // The only priority below the normal one that Linux has for a thread.
    pool->setThreadPriority(QThread::IdlePriority);
    return [pool = std::move(pool)](std::function<void()> task) {
        // Wrapped, so that the thread's stack names this function: tests/races.supp looks for it.
        pool->start([task = std::move(task)] { task(); });
    };
}

} // namespace clavo
