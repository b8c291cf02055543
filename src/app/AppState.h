// SPDX-License-Identifier: MIT
#pragma once

#include "app/BankLoad.h"
#include "app/Permission.h"
#include "app/Platform.h"
#include "app/Settings.h"
#include "app/Status.h"
#include "audio/SoundEngine.h"
#include "input/GlobalHotKey.h"
#include "input/InputMonitor.h"
#include "packs/SoundPack.h"
#include "stats/StatsStore.h"
#include "time/Timer.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace clavo
{

/// The application: its settings, packs, sound engine and input monitor, and the path from an event
/// to a sound. A changed setting is written at once and applies to the next event. Thread: main.
class AppState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(QString packID READ packID WRITE setPackID NOTIFY packIDChanged)
    Q_PROPERTY(bool keyUpSounds READ keyUpSounds WRITE setKeyUpSounds NOTIFY keyUpSoundsChanged)
    Q_PROPERTY(bool mouseSounds READ mouseSounds WRITE setMouseSounds NOTIFY mouseSoundsChanged)
    Q_PROPERTY(bool scrollSounds READ scrollSounds WRITE setScrollSounds NOTIFY scrollSoundsChanged)
    Q_PROPERTY(bool spatial READ spatial WRITE setSpatial NOTIFY spatialChanged)
    Q_PROPERTY(
        bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool hasPermission READ hasPermission NOTIFY permissionChanged)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY permissionChanged)
    Q_PROPERTY(QString selectedPackName READ selectedPackName NOTIFY selectedPackChanged)
    Q_PROPERTY(clavo::Permission* permission READ permission CONSTANT)
    Q_PROPERTY(clavo::StatsStore* stats READ stats CONSTANT)

public:
    /// Time and other processes.
    struct Surroundings {
        std::function<std::chrono::nanoseconds()> uptime; // Since the system's start.
        MakeTimer makeTimer;
        Permission::Ask askFreshProcess;
        StatsSurroundings stats; // The state uses the same wall clock.

        /// The real ones, for the program in this file.
        [[nodiscard]] static Surroundings real(const std::filesystem::path& executable);
    };

    /// The program's one state, made on first use over the shared platform and never destroyed.
    static AppState& shared();

    /// Reads the settings, loads the packs and starts listening. The platform must outlive the
    /// state and call nothing afterwards. Null statistics stand for the user's own.
    AppState(Platform& platform, Surroundings surroundings,
             std::unique_ptr<StatsStore> stats = nullptr);

    void setEnabled(bool enabled);
    /// Turns the sounds off if they are on, otherwise on.
    void toggle();
    /// Master volume, 0 to 1.
    void setVolume(double volume);
    /// Selects a pack and loads it, even if it is selected already. An unknown id loads the first
    /// pack. Until the pack is loaded, keys sound with the previous one; if it cannot be loaded,
    /// that is selected again.
    void setPackID(const QString& packID);
    void setKeyUpSounds(bool on)
    {
        change(&Settings::keyUpSounds, on, &AppState::keyUpSoundsChanged);
    }
    void setMouseSounds(bool on)
    {
        change(&Settings::mouseSounds, on, &AppState::mouseSoundsChanged);
    }
    void setScrollSounds(bool on)
    {
        change(&Settings::scrollSounds, on, &AppState::scrollSoundsChanged);
    }
    void setSpatial(bool on) { change(&Settings::spatial, on, &AppState::spatialChanged); }

    /// Registers or unregisters the program to start at login, unless that is done already. Until
    /// the next start the property shows the requested value, even if registering failed.
    void setLaunchAtLogin(bool launchAtLogin);

    /// Reads the packs from disk again and loads the selected one.
    Q_INVOKABLE void reloadPacks();
    /// Plays a phrase with the pack of this id, if there is one.
    Q_INVOKABLE void preview(const QString& packID);
    /// Starts a new instance of the program and ends this one.
    Q_INVOKABLE void relaunch() { m_permission.relaunch(); }

    /// Requests the permission to listen, see Permission.
    Q_INVOKABLE void requestPermission() { m_permission.request(); }

    [[nodiscard]] bool enabled() const { return m_settings.enabled; }
    [[nodiscard]] double volume() const { return m_settings.volume; }
    [[nodiscard]] QString packID() const { return QString::fromStdString(m_settings.packID); }
    [[nodiscard]] bool keyUpSounds() const { return m_settings.keyUpSounds; }
    [[nodiscard]] bool mouseSounds() const { return m_settings.mouseSounds; }
    [[nodiscard]] bool scrollSounds() const { return m_settings.scrollSounds; }
    [[nodiscard]] bool spatial() const { return m_settings.spatial; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }
    /// The input monitor is listening.
    [[nodiscard]] bool hasPermission() const { return m_permission.isListening(); }
    /// The permission was granted and takes effect when the user relaunches the program.
    [[nodiscard]] bool needsRelaunch() const { return m_permission.needsRelaunch(); }
    [[nodiscard]] Permission* permission() { return &m_permission; }
    [[nodiscard]] const std::vector<SoundPack>& packs() const { return m_packs; }
    /// The pack with the selected id, or the first one; null when there is no pack.
    [[nodiscard]] const SoundPack* selectedPack() const;
    /// Empty when there is no pack.
    [[nodiscard]] QString selectedPackName() const;
    /// The folder for the user's own packs; it need not exist.
    [[nodiscard]] std::filesystem::path packsFolder() const;
    [[nodiscard]] Status status() const;
    [[nodiscard]] StatsStore* stats() { return m_stats.get(); }
    [[nodiscard]] const SoundEngine& sound() const { return m_sound; }

signals:
    void enabledChanged();
    void volumeChanged();
    void packIDChanged();
    void keyUpSoundsChanged();
    void mouseSoundsChanged();
    void scrollSoundsChanged();
    void spatialChanged();
    void launchAtLoginChanged();
    void permissionChanged();
    void packsChanged();
    void selectedPackChanged();

private:
    void change(Setting::Switch setting, bool value, void (AppState::*changed)());
    void loadPacks();
    void loadSelectedPack();
    void storePackID();
    void announcePackID();
    void updatePositionTracking();

    void handle(const InputMonitor::Event& event);
    void handle(const InputMonitor::Key& key);
    void handle(const InputMonitor::Mouse& mouse);
    void handle(const InputMonitor::Scroll& scroll);

    Platform& m_platform;
    Surroundings m_surroundings;
    Settings m_settings;
    std::vector<SoundPack> m_packs;
    bool m_launchAtLogin = false;
    std::chrono::nanoseconds m_lastScroll{0}; // Uptime of the last tick played.
    std::unique_ptr<StatsStore> m_stats;
    SoundEngine m_sound;
    BankLoad m_bankLoad; // Of the key bank.
    BankLoad m_previewLoad;
    std::optional<std::string> m_storedPackID; // While a choice is not stored yet.
    std::string m_announcedPackID;             // By packIDChanged().
    InputMonitor m_input;
    std::optional<GlobalHotKey> m_hotKey;
    Permission m_permission;
};

} // namespace clavo
