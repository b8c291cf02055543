// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "app/FreshProcess.h"

#include <chrono>
#include <utility>

namespace clavo
{
namespace
{

double secondsSinceBoot()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

AppState* makeShared()
{
    auto platform = makePlatform();
    auto surroundings = AppState::Surroundings::real(platform.executable);
    return new AppState(std::move(platform), std::move(surroundings));
}

} // namespace

AppState::Surroundings AppState::Surroundings::real(const std::filesystem::path& executable)
{
    return {
        .uptime = secondsSinceBoot,
        .runLater = StatsSurroundings::runOnMainThread,
        .askFreshProcess = clavo::askFreshProcess(executable),
        .stats = {},
    };
}

AppState& AppState::shared()
{
    // Never destroyed: the sound server's thread renders until the process ends.
    static auto* const state = makeShared();
    return *state;
}

} // namespace clavo
