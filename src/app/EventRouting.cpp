// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "keyboard/KeyLayout.h"
#include "log/Log.h"

namespace clavo
{
namespace
{

constexpr float keyPanScale = 0.6F;
constexpr float pressGain = 1.0F;
constexpr float releaseGain = 0.8F;
constexpr double scrollInterval = 0.045; // Seconds; a tick needs a longer gap.

/// Stands in for a key that the layout does not know.
constexpr KeyInfo unknownKey{
    .slot = KeySlot::row3, .scancode = -1, .pan = 0.6F, .isCharacter = false};

const KeyInfo& keyInfo(std::int64_t code)
{
    const auto& table = KeyLayout::table();
    const auto found = table.find(code);
    return found == table.end() ? unknownKey : found->second;
}

} // namespace

void AppState::handle(const InputMonitor::Event& event)
{
    std::visit([this](const auto& alternative) { handle(alternative); }, event);
}

void AppState::handle(const InputMonitor::Key& key)
{
    const auto& info = keyInfo(key.code);
    if (key.down)
        m_stats.record(info.isCharacter);
    const auto audible = m_settings.enabled && (key.down || m_settings.keyUpSounds);
    log::debug("touche {}, son: {}", key.down ? "appuyée" : "relâchée", audible);
    if (!audible)
        return;
    if (auto buffer = m_sound.keyBank().buffer(info, key.down)) {
        m_sound.play(std::move(buffer), m_settings.spatial ? info.pan * keyPanScale : 0.0F,
                     key.down ? pressGain : releaseGain);
    }
}

void AppState::handle(const InputMonitor::Mouse& mouse)
{
    if (m_settings.enabled && m_settings.mouseSounds)
        m_sound.playMouse(mouse.down, m_settings.spatial ? mouse.pan : 0.0F);
}

void AppState::handle(const InputMonitor::Scroll& scroll)
{
    if (!m_settings.enabled || !m_settings.scrollSounds)
        return;
    const auto now = m_surroundings.uptime();
    if (!(now - m_lastScroll > scrollInterval))
        return;
    m_lastScroll = now;
    m_sound.playScroll(m_settings.spatial ? scroll.pan : 0.0F);
}

} // namespace clavo
