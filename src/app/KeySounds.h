// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "audio/SoundEngine.h"
#include "input/InputMonitor.h"
#include "keyboard/KeyLayout.h"

#include <cstdint>

namespace clavo
{

/// The layout's entry for this virtual key code. An unknown code counts as a key of the home row
/// that produces no character.
[[nodiscard]] const KeyInfo& keyInfo(std::int64_t code);

/// Plays the sound of the event from the engine's key bank, unless the settings silence it or it is
/// late.
void playKey(SoundEngine& sound, const Settings& settings, const InputMonitor::Key& key);

} // namespace clavo
