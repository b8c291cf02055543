// SPDX-License-Identifier: MIT
#pragma once

#include "app/PermissionWait.h"
#include "app/Settings.h"
#include "app/Status.h"
#include "audio/SoundEngine.h"
#include "input/GlobalHotKey.h"
#include "input/InputMonitor.h"
#include "packs/SoundPack.h"
#include "platform/Platform.h"
#include "stats/StatsStore.h"

#include <QObject>
#include <QString>

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
    Q_PROPERTY(bool hasPermission READ hasPermission NOTIFY hasPermissionChanged)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY needsRelaunchChanged)
    Q_PROPERTY(bool needsLogin READ needsLogin NOTIFY inputAccessChanged)
    Q_PROPERTY(bool lacksKeyboard READ lacksKeyboard NOTIFY inputAccessChanged)
    Q_PROPERTY(QString permissionCommands READ permissionCommands NOTIFY inputAccessChanged)
    Q_PROPERTY(QString selectedPackName READ selectedPackName NOTIFY selectedPackChanged)
    Q_PROPERTY(clavo::StatsStore* stats READ stats CONSTANT)

public:
    /// Time and other processes, as the state sees them.
    struct Surroundings {
        std::function<double()> uptime; // Seconds since the system's start.
        SoundEngine::RunLater runLater;
        PermissionWait::Ask askFreshProcess;
        StatsSurroundings stats; // Its wall clock is the state's too.

        /// The real ones, for the program of this file.
        [[nodiscard]] static Surroundings real(const std::filesystem::path& executable);
    };

    /// The one instance of the program, made on first use for the platform it runs on and kept
    /// until the process ends.
    static AppState& shared();

    /// Reads the settings, loads the packs and starts listening.
    AppState(Platform platform, Surroundings surroundings);
    /// The same with these statistics; null are the user's own.
    AppState(Platform platform, Surroundings surroundings, std::unique_ptr<StatsStore> stats);

    void setEnabled(bool enabled);
    /// Turns the sounds on or off, whichever they are not.
    void toggle();
    /// Master volume, 0 to 1.
    void setVolume(double volume);
    /// Selects a pack and loads it, also when it is the selected one already. An unknown id loads
    /// the first pack.
    void setPackID(const QString& packID);
    void setKeyUpSounds(bool on);
    void setMouseSounds(bool on);
    void setScrollSounds(bool on);
    void setSpatial(bool on);

    /// Registers the program to start at login, or no longer, where that is not so already. What is
    /// shown is the wish until the next start.
    void setLaunchAtLogin(bool launchAtLogin);

    /// Reads the list of packs again and loads the selected one.
    Q_INVOKABLE void reloadPacks();
    /// Plays a phrase in the sounds of the pack with this id, if there is one.
    Q_INVOKABLE void preview(const QString& packID);
    /// Starts the program anew in the place of this process.
    Q_INVOKABLE void relaunch();

    /// Asks for the permission to listen and waits for it; shows the user where it is granted if it
    /// is not yet.
    Q_INVOKABLE void requestPermission();

    [[nodiscard]] bool enabled() const { return m_settings.enabled; }
    [[nodiscard]] double volume() const { return m_settings.volume; }
    [[nodiscard]] QString packID() const { return QString::fromStdString(m_settings.packID); }
    [[nodiscard]] bool keyUpSounds() const { return m_settings.keyUpSounds; }
    [[nodiscard]] bool mouseSounds() const { return m_settings.mouseSounds; }
    [[nodiscard]] bool scrollSounds() const { return m_settings.scrollSounds; }
    [[nodiscard]] bool spatial() const { return m_settings.spatial; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }
    /// The input monitor is listening.
    [[nodiscard]] bool hasPermission() const { return m_hasPermission; }
    /// The permission was granted, but the program has just relaunched itself for it and leaves the
    /// next time to the user.
    [[nodiscard]] bool needsRelaunch() const { return m_needsRelaunch; }
    /// The permission was granted and counts from the user's next login.
    [[nodiscard]] bool needsLogin() const { return lacks(InputAccess::State::notInThisLogin); }
    /// There is no keyboard that the permission could be for.
    [[nodiscard]] bool lacksKeyboard() const { return lacks(InputAccess::State::noKeyboard); }
    /// What grants the permission when it is typed into a terminal, a line each; empty where the
    /// program can ask for it.
    [[nodiscard]] QString permissionCommands() const { return m_permissionCommands; }

    [[nodiscard]] const std::vector<SoundPack>& packs() const { return m_packs; }
    /// The pack with the selected id, the first one where none has it, null where there is no pack.
    [[nodiscard]] const SoundPack* selectedPack() const;
    /// Empty where there is no pack.
    [[nodiscard]] QString selectedPackName() const;
    /// The folder for the user's own packs; it need not exist.
    [[nodiscard]] std::filesystem::path packsFolder() const;
    [[nodiscard]] Status status() const;
    [[nodiscard]] StatsStore* stats() { return m_stats.get(); }
    [[nodiscard]] DefaultsStore& defaults() { return *m_platform.defaults; }
    [[nodiscard]] SoundEngine& sound() { return m_sound; }
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
    void hasPermissionChanged();
    void needsRelaunchChanged();
    void inputAccessChanged();
    void packsChanged();
    void selectedPackChanged();

private:
    void change(bool Settings::*setting, std::string_view key, bool value,
                void (AppState::*changed)());
    void loadPacks();
    void loadSelectedPack();
    bool startListening();
    void lookAtInputAccess();
    void choosePosition();
    [[nodiscard]] bool lacks(InputAccess::State what) const;
    void relaunchForPermission();

    void handle(const InputMonitor::Event& event);
    void handle(const InputMonitor::Key& key);
    void handle(const InputMonitor::Mouse& mouse);
    void handle(const InputMonitor::Scroll& scroll);

    Platform m_platform;
    Surroundings m_surroundings;
    Settings m_settings;
    std::vector<SoundPack> m_packs;
    bool m_launchAtLogin = false;
    // As it was when last looked at, which takes a look at every input device.
    InputAccess::State m_inputAccess = InputAccess::State::refused;
    QString m_permissionCommands;
    bool m_hasPermission = false;
    bool m_needsRelaunch = false;
    double m_lastScroll = 0; // Uptime of the last tick played, seconds.
    std::unique_ptr<StatsStore> m_stats;
    SoundEngine m_sound;
    InputMonitor m_input;
    std::optional<GlobalHotKey> m_hotKey;
    PermissionWait m_permissionWait;
};

} // namespace clavo
