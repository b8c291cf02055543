// SPDX-License-Identifier: MIT
#include "app/FreshProcess.h"

#include "input/InputMonitor.h"

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <memory>
#include <utility>

namespace clavo
{

PermissionWait::Ask askFreshProcess(std::filesystem::path executable)
{
    return [executable = std::move(executable)](std::function<void(bool)> receiver) {
        auto granted = std::make_shared<std::atomic<bool>>(false);
        auto* const thread = QThread::create([executable, granted] {
            *granted = InputMonitor::permissionGrantedInFreshProcess(executable);
        });
        // Delivered on the main thread, and to nobody once the application is gone.
        QObject::connect(thread, &QThread::finished, qApp,
                         [thread, granted, receiver = std::move(receiver)] {
                             thread->deleteLater();
                             receiver(*granted);
                         });
        thread->start(QThread::LowPriority);
    };
}

} // namespace clavo
