// SPDX-License-Identifier: MIT
#include "app/AppState.h"

#include "log/Log.h"
#include "packs/PackLibrary.h"

#include <algorithm>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::string_view permissionRelaunchKey = "permissionRelaunch"; // Seconds since 1970.
constexpr double relaunchGuard = 60; // Seconds; an automatic relaunch needs a longer gap.

} // namespace

AppState::AppState(Platform platform, Surroundings surroundings)
    : m_platform(std::move(platform)), m_surroundings(std::move(surroundings)),
      m_hasPermission(m_platform.inputAccess->isGranted()),
      m_sound(*m_platform.audioOutput, m_surroundings.runLater),
      m_input(*m_platform.eventTap, *m_platform.secureInput, *m_platform.screens),
      m_permissionWait({
          .runLater = m_surroundings.runLater,
          .uptime = m_surroundings.uptime,
          .isListening = [this] { return m_hasPermission; },
          .ask = m_surroundings.askFreshProcess,
          .onGranted = [this] { relaunchForPermission(); },
      })
{
    m_settings = readSettings(*m_platform.defaults);
    m_sound.setVolume(static_cast<float>(m_settings.volume));
    loadPacks();
    m_input.onEvent = [this](const InputMonitor::Event& event) { handle(event); };
    m_sound.onPaused = [this] {
        m_platform.eventTap->notifyNextMotion([this] {
            if (m_settings.enabled)
                m_sound.wake();
        });
    };
    if (!startListening())
        requestPermission();
}

void AppState::change(bool Settings::*setting, std::string_view key, bool value,
                      void (AppState::*changed)())
{
    const auto previous = std::exchange(m_settings.*setting, value);
    m_platform.defaults->setValue(key, value);
    if (value != previous)
        emit(this->*changed)();
}

void AppState::setEnabled(bool enabled)
{
    change(&Settings::enabled, SettingsKey::enabled, enabled, &AppState::enabledChanged);
    if (enabled)
        m_sound.wake();
}

void AppState::setKeyUpSounds(bool on)
{
    change(&Settings::keyUpSounds, SettingsKey::keyUpSounds, on, &AppState::keyUpSoundsChanged);
}

void AppState::setMouseSounds(bool on)
{
    change(&Settings::mouseSounds, SettingsKey::mouseSounds, on, &AppState::mouseSoundsChanged);
}

void AppState::setScrollSounds(bool on)
{
    change(&Settings::scrollSounds, SettingsKey::scrollSounds, on, &AppState::scrollSoundsChanged);
}

void AppState::setSpatial(bool on)
{
    change(&Settings::spatial, SettingsKey::spatial, on, &AppState::spatialChanged);
}

void AppState::setVolume(double volume)
{
    const auto previous = std::exchange(m_settings.volume, volume);
    m_platform.defaults->setValue(SettingsKey::volume, volume);
    m_sound.setVolume(static_cast<float>(volume));
    if (volume != previous)
        emit volumeChanged();
}

void AppState::setPackID(const QString& packID)
{
    const auto previous = std::exchange(m_settings.packID, packID.toStdString());
    m_platform.defaults->setValue(SettingsKey::packID, m_settings.packID);
    loadSelectedPack();
    if (m_settings.packID != previous)
        emit packIDChanged();
}

void AppState::reloadPacks()
{
    loadPacks();
    emit packsChanged();
}

const SoundPack* AppState::selectedPack() const
{
    const auto selected = std::ranges::find(m_packs, m_settings.packID, &SoundPack::id);
    if (selected != m_packs.end())
        return &*selected;
    return m_packs.empty() ? nullptr : &m_packs.front();
}

void AppState::loadPacks()
{
    m_packs = PackLibrary::allPacks({
        .builtIn =
            m_platform.resources.empty() ? m_platform.resources : m_platform.resources / "Packs",
        .custom = PackLibrary::customFolder(m_platform.applicationSupport),
    });
    loadSelectedPack();
}

void AppState::loadSelectedPack()
{
    const auto* pack = selectedPack();
    if (!pack) {
        log::error("aucun pack trouvé ({})", log::Private{m_settings.packID});
        return;
    }
    m_sound.setKeyBank(PackLibrary::makeBank(*pack, m_sound.format()));
    log::notice("pack chargé : {}", pack->id);
}

bool AppState::startListening()
{
    const auto granted = m_platform.inputAccess->isGranted();
    const auto listening = granted && m_input.start();
    log::notice("autorisation : {}, écoute : {}", granted, listening);
    const auto previous = std::exchange(m_hasPermission, listening);
    if (listening != previous)
        emit hasPermissionChanged();
    return listening;
}

void AppState::requestPermission()
{
    if (!m_platform.inputAccess->request())
        m_platform.inputAccess->showSettings();
    m_permissionWait.start();
}

void AppState::relaunchForPermission()
{
    const auto now = m_surroundings.wallClock();
    const auto last = m_platform.defaults->value(permissionRelaunchKey).value_or(0.0);
    const auto* const lastTime = std::get_if<double>(&last);
    if (now - (lastTime ? *lastTime : 0) > relaunchGuard) {
        m_platform.defaults->setValue(permissionRelaunchKey, now);
        log::notice("autorisation accordée : relance de Clavo");
        return;
    }
    if (!std::exchange(m_needsRelaunch, true))
        emit needsRelaunchChanged();
}

} // namespace clavo
