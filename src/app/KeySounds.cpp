// SPDX-License-Identifier: MIT
#include "app/KeySounds.h"

#include "audio/SoundLevels.h"
#include "keyboard/KeyLayout.h"
#include "keyboard/KeySlot.h"
#include "log/Log.h"

#include <utility>

namespace clavo
{
namespace
{

/// Used for keys that the layout does not know.
constexpr KeyInfo unknownKey{
    .slot = KeySlot::row3, .scancode = -1, .pan = 0.6F, .isCharacter = false};

} // namespace

const KeyInfo& keyInfo(std::int64_t code)
{
    const auto& table = KeyLayout::table();
    const auto found = table.find(code);
    return found == table.end() ? unknownKey : found->second;
}

void playKey(SoundEngine& sound, const Settings& settings, const InputMonitor::Key& key)
{
    const auto audible = settings.enabled && !key.isLate && (key.down || settings.keyUpSounds);
    log::debug("touche {}, son: {}", key.down ? "appuyée" : "relâchée", audible);
    if (!audible)
        return;
    const auto& info = keyInfo(key.code);
    if (auto buffer = sound.keyBank().buffer(info, key.down, sound.draw())) {
        sound.play(std::move(buffer), settings.spatial ? info.pan * panWidth : 0.0F,
                   key.down ? pressGain : releaseGain);
    }
}

} // namespace clavo
