// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace clavo
{

/// Calls back once on the main thread, from the main loop. start() replaces a call still to come.
class Timer
{
public:
    virtual ~Timer() = default;
    virtual void start(std::chrono::milliseconds delay, std::function<void()> due) = 0;
    virtual void stop() = 0;
};

} // namespace clavo
