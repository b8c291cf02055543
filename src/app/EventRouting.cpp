// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "app/KeySounds.h"

namespace clavo
{
namespace
{

constexpr std::chrono::milliseconds scrollInterval{45}; // A tick needs a longer gap.

} // namespace

void AppState::handle(const InputMonitor::Event& event)
{
    std::visit([this](const auto& alternative) { handle(alternative); }, event);
}

void AppState::handle(const InputMonitor::Key& key)
{
    if (key.down)
        m_stats->record(keyInfo(key.code).isCharacter);
    playKey(m_sound, m_settings, key);
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
    if (now - m_lastScroll <= scrollInterval)
        return;
    m_lastScroll = now;
    m_sound.playScroll(m_settings.spatial ? scroll.pan : 0.0F);
}

} // namespace clavo
