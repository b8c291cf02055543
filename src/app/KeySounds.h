// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "audio/SoundEngine.h"
#include "input/InputMonitor.h"
#include "keyboard/KeyLayout.h"

#include <cstdint>

namespace clavo
{

/// What the layout knows of the key with this virtual key code. One that it does not know is taken
/// for a key of the home row that types nothing.
[[nodiscard]] const KeyInfo& keyInfo(std::int64_t code);

/// Plays what the engine's key bank has for the event, if these settings let it sound.
void playKey(SoundEngine& sound, const Settings& settings, const InputMonitor::Key& key);

} // namespace clavo
