// SPDX-License-Identifier: MIT
#include "log/Log.h"

#include <atomic>
#include <cstdio>

namespace clavo::log
{
namespace
{

std::atomic<Sink> currentSink = writeToStandardError;
std::atomic<Level> threshold = Level::notice;

} // namespace

// In one write, so that lines of two processes do not mix. Not with fmt::print, which throws if the
// standard error is closed.
void writeToStandardError(Level, std::string_view line)
{
    std::fputs(fmt::format("clavo: {}\n", line).c_str(), stderr);
}

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

void writeErrorEverywhere(std::string_view line)
{
    const Sink sink = currentSink;
    sink(Level::error, line);
    if (sink != writeToStandardError)
        writeToStandardError(Level::error, line);
}

} // namespace clavo::log
