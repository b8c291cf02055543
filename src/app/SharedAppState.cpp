// SPDX-License-Identifier: MIT
#include "app/AppState.h"

namespace clavo
{

AppState& AppState::shared()
{
    // Never destroyed: the sound server's thread renders until the process ends.
    static auto* const state = new AppState(makePlatform());
    return *state;
}

} // namespace clavo
