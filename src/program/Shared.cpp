// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "loop/QtTimer.h"
#include "platform/Platform.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

namespace clavo
{
namespace
{

/// Starts the executable anew and asks it whether it may listen, on a background thread of low
/// priority.
Permission::Ask askFreshProcess(const std::filesystem::path& executable)
{
    return [executable](QObject* asker, auto receiver) {
        auto granted = std::make_shared<std::atomic<bool>>(false);
        auto* const thread = QThread::create([executable, granted] {
            *granted = InputMonitor::permissionGrantedInFreshProcess(executable);
        });
        QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
        // Delivered on the main thread.
        QObject::connect(thread, &QThread::finished, asker,
                         [granted, receiver = std::move(receiver)] { receiver(*granted); });
        thread->start(QThread::LowPriority);
    };
}

} // namespace

AppState::Surroundings AppState::Surroundings::real(const std::filesystem::path& executable)
{
    return {
        .uptime = [] { return std::chrono::steady_clock::now().time_since_epoch(); },
        .makeTimer = makeQtTimer,
        .askFreshProcess = clavo::askFreshProcess(executable),
        .stats = {},
    };
}

// Neither is ever destroyed: the sound server's thread renders until the process ends.

Platform& Platform::shared()
{
    static auto* const platform = new Platform(makePlatform());
    return *platform;
}

AppState& AppState::shared()
{
    auto& platform = Platform::shared();
    static auto* const state = new AppState(platform, Surroundings::real(platform.executable));
    return *state;
}

} // namespace clavo
