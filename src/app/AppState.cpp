// SPDX-License-Identifier: MIT
#include "app/AppState.h"

#include "app/CommandLine.h"
#include "log/Log.h"
#include "packs/PackLibrary.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr std::string_view permissionRelaunchKey = "permissionRelaunch"; // Seconds since 1970.
constexpr double relaunchGuard = 60; // Seconds; an automatic relaunch needs a longer gap.

} // namespace

AppState::AppState(Platform platform, Surroundings surroundings)
    : AppState(std::move(platform), std::move(surroundings), nullptr)
{
}

AppState::AppState(Platform platform, Surroundings surroundings, std::unique_ptr<StatsStore> stats)
    : m_platform(std::move(platform)), m_surroundings(std::move(surroundings)),
      m_inputAccess(m_platform.inputAccess->state()),
      m_hasPermission(m_inputAccess == InputAccess::State::granted),
      m_stats(stats ? std::move(stats)
                    : std::make_unique<StatsStore>(m_platform.applicationSupport,
                                                   m_surroundings.stats)),
      m_sound(*m_platform.audioOutput, m_surroundings.runLater),
      m_input(*m_platform.eventTap, *m_platform.secureInput, *m_platform.screens,
              m_surroundings.uptime),
      m_permissionWait({
          .runLater = m_surroundings.runLater,
          .uptime = m_surroundings.uptime,
          .isListening = [this] { return m_hasPermission; },
          .ask =
              [this](std::function<void(bool)> receiver) {
                  lookAtInputAccess();
                  m_surroundings.askFreshProcess(std::move(receiver));
              },
          .onGranted = [this] { relaunchForPermission(); },
      })
{
    m_settings = readSettings(*m_platform.defaults);
    m_launchAtLogin = m_platform.loginItem->status() == LoginItem::Status::enabled;
    m_sound.setVolume(static_cast<float>(m_settings.volume));
    loadPacks();
    choosePosition();
    m_input.onEvent = [this](const InputMonitor::Event& event) { handle(event); };
    m_sound.onPaused = [this] {
        m_platform.eventTap->notifyNextMotion([this] {
            if (m_settings.enabled)
                m_sound.wake();
        });
    };
    // Put off, so that the event that told of the press is over first.
    m_hotKey.emplace(*m_platform.hotKeys, GlobalHotKey::kKey,
                     GlobalHotKey::cmdKey + GlobalHotKey::shiftKey, [state = QPointer(this)] {
                         if (state)
                             state->m_surroundings.runLater(0ms, [state] {
                                 if (state)
                                     state->toggle();
                             });
                     });
    m_platform.inputAccess->changed = [this] { lookAtInputAccess(); };
    if (!startListening())
        requestPermission();
}

void AppState::change(bool Settings::*setting, std::string_view key, bool value,
                      void (AppState::*changed)())
{
    const auto previous = std::exchange(m_settings.*setting, value);
    m_platform.defaults->setValue(key, value);
    choosePosition();
    if (value != previous)
        emit(this->*changed)();
}

void AppState::choosePosition()
{
    const auto hasPlaced = m_settings.mouseSounds || m_settings.scrollSounds;
    m_platform.eventTap->setPositionUsed(m_settings.spatial && hasPlaced);
}

void AppState::setEnabled(bool enabled)
{
    change(&Settings::enabled, SettingsKey::enabled, enabled, &AppState::enabledChanged);
    if (enabled)
        m_sound.wake();
}

void AppState::toggle()
{
    setEnabled(!m_settings.enabled);
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

void AppState::setLaunchAtLogin(bool launchAtLogin)
{
    const auto previous = std::exchange(m_launchAtLogin, launchAtLogin);
    clavo::setLaunchAtLogin(*m_platform.loginItem, launchAtLogin);
    if (launchAtLogin != previous)
        emit launchAtLoginChanged();
}

void AppState::preview(const QString& packID)
{
    const auto pack = std::ranges::find(m_packs, packID.toStdString(), &SoundPack::id);
    if (pack != m_packs.end())
        m_sound.preview(*pack);
}

void AppState::relaunch()
{
    clavo::relaunch(*m_platform.relauncher);
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

QString AppState::selectedPackName() const
{
    const auto* const pack = selectedPack();
    return pack ? QString::fromStdString(pack->name) : QString();
}

std::filesystem::path AppState::packsFolder() const
{
    return PackLibrary::customFolder(m_platform.applicationSupport);
}

Status AppState::status() const
{
    const auto* const pack = selectedPack();
    const auto secondsSince = [this](double time) {
        return static_cast<std::int64_t>(m_surroundings.uptime() - time);
    };
    const auto lastEvent = m_input.lastEvent();
    return {
        .version = std::string(version()),
        .tap = m_platform.eventTap->name(),
        .isListening = m_hasPermission,
        .access = m_platform.inputAccess->state(),
        .needsRelaunch = m_needsRelaunch,
        .idle = lastEvent ? std::optional(secondsSince(*lastEvent)) : std::nullopt,
        .secureReason = m_platform.secureInput->reason(),
        .output = m_platform.audioOutput->status(),
        .isOutputRunning = m_platform.audioOutput->isRunning(),
        .packName = pack ? pack->name : std::string(),
        .packID = pack ? pack->id : std::string(),
        .settings = m_settings,
    };
}

void AppState::loadPacks()
{
    m_packs = PackLibrary::allPacks(
        PackLibrary::folders(m_platform.resources, m_platform.applicationSupport));
    loadSelectedPack();
}

void AppState::loadSelectedPack()
{
    const auto* pack = selectedPack();
    emit selectedPackChanged();
    if (!pack) {
        log::error("aucun pack trouvé ({})", log::Private{m_settings.packID});
        return;
    }
    m_sound.setKeyBank(PackLibrary::makeBank(*pack, m_sound.format()));
    log::notice("pack chargé : {}", pack->id);
}

bool AppState::startListening()
{
    lookAtInputAccess();
    const auto granted = m_inputAccess == InputAccess::State::granted;
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
    lookAtInputAccess();
    m_permissionWait.start();
}

void AppState::lookAtInputAccess()
{
    const auto state = m_platform.inputAccess->state();
    const auto isRefused = state == InputAccess::State::refused;
    const auto commands = isRefused ? m_platform.inputAccess->commands() : std::string();
    const auto previous = std::exchange(m_inputAccess, state);
    const auto previousCommands =
        std::exchange(m_permissionCommands, QString::fromStdString(commands));
    if (state != previous || m_permissionCommands != previousCommands)
        emit inputAccessChanged();
}

bool AppState::lacks(InputAccess::State what) const
{
    return !m_hasPermission && m_inputAccess == what;
}

void AppState::relaunchForPermission()
{
    const auto sinceEpoch = m_surroundings.stats.wallClock().time_since_epoch();
    const auto now = std::chrono::duration<double>(sinceEpoch).count();
    const auto last = m_platform.defaults->value(permissionRelaunchKey).value_or(0.0);
    const auto* const lastTime = std::get_if<double>(&last);
    if (now - (lastTime ? *lastTime : 0) > relaunchGuard) {
        m_platform.defaults->setValue(permissionRelaunchKey, now);
        log::notice("autorisation accordée : relance de Clavo");
        relaunch();
        return;
    }
    if (!std::exchange(m_needsRelaunch, true))
        emit needsRelaunchChanged();
}

} // namespace clavo
