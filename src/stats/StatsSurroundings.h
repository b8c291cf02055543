// SPDX-License-Identifier: MIT
#pragma once

#include <QTimeZone>

#include <chrono>
#include <functional>

namespace clavo
{

/// What the statistics take from the world around them; the real one unless said otherwise.
struct StatsSurroundings {
    using WallClock = std::function<std::chrono::system_clock::time_point()>;
    /// Runs a task once on the calling thread, from its main loop, after the delay.
    using RunLater = std::function<void(std::chrono::milliseconds, std::function<void()>)>;
    /// Runs tasks one after the other, in the order they come, without holding up the caller.
    using RunInBackground = std::function<void(std::function<void()>)>;

    /// One thread of low priority. The end of the answer's last copy waits for the tasks that were
    /// given to it.
    [[nodiscard]] static RunInBackground oneThread();
    static void runOnMainThread(std::chrono::milliseconds delay, std::function<void()> task);

    WallClock wallClock = std::chrono::system_clock::now;
    QTimeZone timeZone = QTimeZone::systemTimeZone();
    RunLater runLater = runOnMainThread;
    RunInBackground runInBackground = oneThread();
};

} // namespace clavo
