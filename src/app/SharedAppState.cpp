// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "app/FreshProcess.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace clavo
{
namespace
{

template <typename Clock> double secondsOf()
{
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

void runOnMainQueue(std::chrono::milliseconds delay, std::function<void()> task)
{
    // The analyser cannot see that Qt owns the task.
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(task));
}

AppState* makeShared()
{
    auto platform = makePlatform();
    AppState::Surroundings surroundings{
        .uptime = secondsOf<std::chrono::steady_clock>,
        .wallClock = secondsOf<std::chrono::system_clock>,
        .runLater = runOnMainQueue,
        .askFreshProcess = askFreshProcess(platform.executable),
    };
    return new AppState(std::move(platform), std::move(surroundings));
}

} // namespace

AppState& AppState::shared()
{
    // Never destroyed: the sound server's thread renders until the process ends.
    static auto* const state = makeShared();
    return *state;
}

} // namespace clavo
