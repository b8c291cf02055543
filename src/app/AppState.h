// SPDX-License-Identifier: MIT
#pragma once

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
#include <vector>

namespace clavo
{

/// The application: its settings, packs, sound engine and input monitor, and the way from an event
/// to a sound. Every setting is written through the moment it changes, and the very next event uses
/// it. Thread: main.
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
    /// Time and other processes, as the state sees them.
    struct Surroundings {
        std::function<std::chrono::nanoseconds()> uptime; // Since the system's start.
        MakeTimer makeTimer;
        Permission::Ask askFreshProcess;
        StatsSurroundings stats; // Its wall clock is the state's too.

        /// The real ones, for the program of this file.
        [[nodiscard]] static Surroundings real(const std::filesystem::path& executable);
    };

    /// The one instance of the program, made on first use over the shared platform and kept until
    /// the process ends.
    static AppState& shared();

    /// Reads the settings, loads the packs and starts listening. The platform outlives the state,
    /// after whose end no main loop runs it. Null statistics are the user's own.
    AppState(Platform& platform, Surroundings surroundings,
             std::unique_ptr<StatsStore> stats = nullptr);

    void setEnabled(bool enabled);
    /// Turns the sounds off when they are on, else on.
    void toggle();
    /// Master volume, 0 to 1.
    void setVolume(double volume);
    /// Selects a pack and loads it, also when it is the selected one already. An unknown id loads
    /// the first pack. A pack that cannot be loaded leaves the selection as it is.
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

    /// Registers the program to start at login, or no longer, unless that is so already. What is
    /// shown is the wish until the next start.
    void setLaunchAtLogin(bool launchAtLogin);

    /// Reads the list of packs again and loads the selected one.
    Q_INVOKABLE void reloadPacks();
    /// Plays a phrase in the sounds of the pack with this id, if there is one.
    Q_INVOKABLE void preview(const QString& packID);
    /// Starts the program anew in the place of this process.
    Q_INVOKABLE void relaunch() { m_permission.relaunch(); }

    /// Asks for the permission to listen, see Permission.
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
    /// The permission was granted, and the user has to relaunch the program for it.
    [[nodiscard]] bool needsRelaunch() const { return m_permission.needsRelaunch(); }
    [[nodiscard]] Permission* permission() { return &m_permission; }
    [[nodiscard]] const std::vector<SoundPack>& packs() const { return m_packs; }
    /// The pack with the selected id, the first one when none has it, null when there is no pack.
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
    /// False when the pack could not be loaded; the former sounds stay then.
    bool loadSelectedPack();
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
    InputMonitor m_input;
    std::optional<GlobalHotKey> m_hotKey;
    Permission m_permission;
};

} // namespace clavo
