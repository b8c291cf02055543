// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "app/FreshProcess.h"

#include <chrono>
#include <utility>

namespace clavo
{
namespace
{

double uptime()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

AppState* makeShared()
{
    auto platform = makePlatform();
    AppState::Surroundings surroundings{
        .uptime = uptime,
        .runLater = StatsSurroundings::runOnMainThread,
        .askFreshProcess = askFreshProcess(platform.executable),
        .stats = {},
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
