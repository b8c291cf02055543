// SPDX-License-Identifier: MIT
#include "app/AppState.h"

#include "app/CommandLine.h"
#include "app/KeySounds.h"
#include "app/LoginItem.h"
#include "log/Log.h"
#include "packs/PackLibrary.h"
#include "text/Printable.h"

#include <QMetaObject>

#include <algorithm>
#include <chrono>
#include <exception>
#include <string>
#include <utility>
#include <variant>

namespace clavo
{
namespace
{

constexpr std::chrono::milliseconds scrollInterval{45}; // A tick needs a longer gap.

/// A pack's id as the log and the status show it.
std::string shownID(const SoundPack& pack)
{
    return printable(pack.id, SoundPack::textLimit);
}

void logFailedLoad(const std::string& id, const std::exception& exception)
{
    log::error("pack {} impossible à charger : {}", id, exception.what());
}

} // namespace

AppState::AppState(Platform& platform, Surroundings surroundings, std::unique_ptr<StatsStore> stats)
    : m_platform(platform), m_surroundings(std::move(surroundings)),
      m_stats(stats ? std::move(stats)
                    : std::make_unique<StatsStore>(m_platform.applicationSupport,
                                                   m_surroundings.stats)),
      m_sound(*m_platform.audioOutput, m_surroundings.makeTimer),
      m_bankLoad(m_surroundings.makeTimer(), m_surroundings.uptime),
      m_previewLoad(m_surroundings.makeTimer(), m_surroundings.uptime),
      m_input(*m_platform.eventTap, *m_platform.secureInput, *m_platform.screens,
              m_surroundings.uptime),
      m_permission(m_platform, m_input,
                   {.timer = m_surroundings.makeTimer(),
                    .uptime = m_surroundings.uptime,
                    .wallClock = m_surroundings.stats.wallClock,
                    .askFreshProcess = m_surroundings.askFreshProcess})
{
    m_settings = readSettings(*m_platform.defaults);
    m_announcedPackID = m_settings.packID;
    m_launchAtLogin = m_platform.loginItem->status() == LoginItem::Status::enabled;
    m_sound.setVolume(static_cast<float>(m_settings.volume));
    loadPacks();
    updatePositionTracking();
    m_input.onEvent = [this](const InputMonitor::Event& event) { handle(event); };
    m_sound.onPaused = [this] {
        m_platform.eventTap->notifyNextMotion([this] {
            if (m_settings.enabled)
                m_sound.wake();
        });
    };
    // Queued, so that the event that reported the press ends first.
    m_hotKey.emplace(
        *m_platform.hotKeys, GlobalHotKey::kKey, GlobalHotKey::cmdKey + GlobalHotKey::shiftKey,
        [this] { QMetaObject::invokeMethod(this, &AppState::toggle, Qt::QueuedConnection); });
    connect(&m_permission, &Permission::changed, this, &AppState::permissionChanged);
    m_permission.start();
}

void AppState::change(Setting::Switch setting, bool value, void (AppState::*changed)())
{
    const auto previous = std::exchange(m_settings.*setting, value);
    writeSetting(*m_platform.defaults, m_settings, setting);
    updatePositionTracking();
    if (value != previous)
        emit(this->*changed)();
}

void AppState::updatePositionTracking()
{
    const auto hasPlaced = m_settings.mouseSounds || m_settings.scrollSounds;
    m_platform.eventTap->setPositionUsed(m_settings.spatial && hasPlaced);
}

void AppState::setEnabled(bool enabled)
{
    change(&Settings::enabled, enabled, &AppState::enabledChanged);
    if (enabled)
        m_sound.wake();
}

void AppState::toggle()
{
    setEnabled(!m_settings.enabled);
}

void AppState::setVolume(double volume)
{
    const auto previous = std::exchange(m_settings.volume, volume);
    writeSetting(*m_platform.defaults, m_settings, &Settings::volume);
    m_sound.setVolume(static_cast<float>(volume));
    if (volume != previous)
        emit volumeChanged();
}

void AppState::setPackID(const QString& packID)
{
    auto previous = std::exchange(m_settings.packID, packID.toStdString());
    if (!m_storedPackID)
        m_storedPackID = std::move(previous);
    loadSelectedPack();
    announcePackID();
}

void AppState::announcePackID()
{
    if (std::exchange(m_announcedPackID, m_settings.packID) != m_settings.packID)
        emit packIDChanged();
}

void AppState::setLaunchAtLogin(bool launchAtLogin)
{
    const auto previous = std::exchange(m_launchAtLogin, launchAtLogin);
    auto& item = *m_platform.loginItem;
    if (launchAtLogin != (item.status() == LoginItem::Status::enabled)) {
        if (const auto error = launchAtLogin ? item.registerItem() : item.unregisterItem())
            log::error("Clavo: lancement au démarrage impossible: {}", *error);
    }
    if (launchAtLogin != previous)
        emit launchAtLoginChanged();
}

void AppState::preview(const QString& packID)
{
    const auto pack = std::ranges::find(m_packs, packID.toStdString(), &SoundPack::id);
    if (pack == m_packs.end())
        return;
    const auto play = [this](SoundBank bank) { m_sound.preview(std::move(bank)); };
    const auto stayQuiet = [id = shownID(*pack)](const std::exception& exception) {
        logFailedLoad(id, exception);
    };
    m_previewLoad.start(*pack, m_sound.format(), {.loaded = play, .failed = stayQuiet},
                        &SoundEngine::previewScancodes());
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
    const auto timeSince = [this](std::chrono::nanoseconds time) {
        return std::chrono::floor<std::chrono::seconds>(m_surroundings.uptime() - time);
    };
    const auto lastEvent = m_input.lastEvent();
    return {
        .version = std::string(version()),
        .tap = m_platform.eventTap->name(),
        .isListening = m_permission.isListening(),
        .access = m_platform.inputAccess->state(),
        .needsRelaunch = m_permission.needsRelaunch(),
        .idle = lastEvent ? std::optional(timeSince(*lastEvent)) : std::nullopt,
        .secureReason = m_platform.secureInput->reason(),
        .output = m_platform.audioOutput->status(),
        .isOutputRunning = m_platform.audioOutput->isRunning(),
        .packName = pack ? pack->name : std::string(),
        .packID = pack ? shownID(*pack) : std::string(),
        .settings = m_settings,
        .missing = m_platform.missing,
    };
}

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
        storePackID();
        return;
    }
    const auto id = shownID(*pack);
    const auto use = [this, id](SoundBank bank) {
        if (bank.leftOut > 0)
            log::notice("pack {} : {} sons laissés de côté, il n'y a de place que pour {} Mio", id,
                        bank.leftOut, PackLibrary::bankBudget >> 20U);
        m_sound.setKeyBank(std::move(bank));
        log::notice("pack chargé : {}", id);
        storePackID();
    };
    const auto keepThePreviousOne = [this, id](const std::exception& exception) {
        logFailedLoad(id, exception);
        if (!m_storedPackID)
            return;
        m_settings.packID = *std::exchange(m_storedPackID, {});
        emit selectedPackChanged();
        announcePackID();
    };
    m_bankLoad.start(*pack, m_sound.format(), {.loaded = use, .failed = keepThePreviousOne});
}

// A choice is stored once its pack is loaded: if loading ends the process, the next start loads the
// previous pack.
void AppState::storePackID()
{
    if (std::exchange(m_storedPackID, {}))
        writeSetting(*m_platform.defaults, m_settings, &Settings::packID);
}

} // namespace clavo
