// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// Calls back once on the main thread, from the main loop. Destroying the timer cancels the call.
class Timer
{
public:
    virtual ~Timer() = default;

    /// Replaces a pending call. The call may start the timer again. Restarting a running timer
    /// allocates nothing.
    virtual void start(std::chrono::milliseconds delay, std::function<void()> due) = 0;
    virtual void stop() = 0;
    /// A call is pending.
    [[nodiscard]] virtual bool isRunning() const = 0;
};

using MakeTimer = std::function<std::unique_ptr<Timer>()>;

} // namespace clavo
