// SPDX-License-Identifier: MIT
#include "log/Log.h"

#include <atomic>
#include <cstdio>

namespace clavo::log
{
namespace
{

void writeToStandardError(Level, std::string_view line)
{
    fmt::print(stderr, "clavo: {}\n", line);
}

std::atomic<Sink> currentSink = writeToStandardError;
std::atomic<Level> threshold = Level::Default;

} // namespace

void setSink(Sink sink)
{
    currentSink = sink;
}

void setThreshold(Level level)
{
    threshold = level;
}

bool isKept(Level level)
{
    return level >= threshold.load(std::memory_order_relaxed);
}

void write(Level level, std::string_view line)
{
    currentSink.load()(level, line);
}

} // namespace clavo::log
