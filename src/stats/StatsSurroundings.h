// SPDX-License-Identifier: MIT
#pragma once

#include "loop/QtTimer.h"

#include <QTimeZone>

#include <chrono>
#include <functional>

namespace clavo
{

/// What the statistics take from the world around them; the real one unless said otherwise.
struct StatsSurroundings {
    using WallClock = std::function<std::chrono::system_clock::time_point()>;
    /// Runs tasks one after the other, in the order they come, without holding up the caller.
    using RunInBackground = std::function<void(std::function<void()>)>;

    /// One thread of low priority. Destroying the last copy of the answer waits for the tasks that
    /// were given to it.
    [[nodiscard]] static RunInBackground oneThread();

    WallClock wallClock = std::chrono::system_clock::now;
    QTimeZone timeZone = QTimeZone::systemTimeZone();
    MakeTimer makeTimer = makeQtTimer;
    RunInBackground runInBackground = oneThread();
};

} // namespace clavo
