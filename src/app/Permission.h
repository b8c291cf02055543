// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"
#include "app/InputAccess.h"
#include "app/Platform.h"
#include "app/Relauncher.h"
#include "input/InputMonitor.h"
#include "time/Timer.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// Requests the permission to listen, waits for it, and listens once it is granted.
///
/// For ten minutes, a fresh process is asked every two seconds whether the permission is granted,
/// since a running process may keep the first answer that it got. Only one such process runs at a
/// time, even if it takes longer than two seconds. Later, one is asked only when the system reports
/// a change and this process sees the permission granted. When it is granted, the program
/// relaunches. Thread: main.
class Permission : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool listening READ isListening NOTIFY changed)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY changed)
    Q_PROPERTY(bool needsLogin READ needsLogin NOTIFY changed)
    Q_PROPERTY(bool lacksKeyboard READ lacksKeyboard NOTIFY changed)
    Q_PROPERTY(QString commands READ commands NOTIFY changed)

public:
    /// Asks without blocking and passes the answer to the receiver later, on the main thread. Once
    /// the asker is destroyed, the answer is dropped.
    using Ask = std::function<void(QObject* asker, std::function<void(bool granted)> receiver)>;

    struct Surroundings {
        std::unique_ptr<Timer> timer;
        std::function<std::chrono::nanoseconds()> uptime; // Since any origin.
        std::function<std::chrono::system_clock::time_point()> wallClock;
        Ask askFreshProcess;
    };

    /// The services and the monitor must outlive it.
    Permission(const Platform& platform, InputMonitor& input, Surroundings surroundings);

    /// Starts listening; requests the permission if that fails.
    void start();
    /// Requests the permission for the user and waits for it; if it is not granted yet, opens the
    /// system's settings. An earlier wait ends, and its pending answer is ignored.
    Q_INVOKABLE void request();
    /// Opens a new instance of the program and then, even if that failed, ends this one from the
    /// main loop.
    Q_INVOKABLE void relaunch();

    /// The input monitor is listening.
    [[nodiscard]] bool isListening() const { return m_isListening; }
    /// The permission was granted shortly after an automatic relaunch, so the next one is left to
    /// the user.
    [[nodiscard]] bool needsRelaunch() const { return m_needsRelaunch; }
    /// The permission was granted and takes effect at the user's next login.
    [[nodiscard]] bool needsLogin() const { return lacks(InputAccess::State::notInThisLogin); }
    /// There is no keyboard to listen to.
    [[nodiscard]] bool lacksKeyboard() const { return lacks(InputAccess::State::noKeyboard); }
    /// The commands, one per line, that grant the permission in a terminal; empty unless it is
    /// refused and cannot be requested.
    [[nodiscard]] QString commands() const { return m_commands; }
    [[nodiscard]] bool isWaiting() const { return m_surroundings.timer->isRunning(); }

signals:
    void changed();

private:
    bool startListening();
    void request(InputAccess::Occasion occasion);
    void refresh();
    void handleChange();
    [[nodiscard]] bool lacks(InputAccess::State what) const;
    void schedulePoll();
    void poll();
    void ask();
    void askIfGranted();
    void handleAnswer(bool granted);
    void relaunchUnlessJustRelaunched();

    InputAccess& m_access;
    DefaultsStore& m_defaults;
    Relauncher& m_relauncher;
    InputMonitor& m_input;
    Surroundings m_surroundings;
    // Of the last refresh, which examines every input device.
    InputAccess::State m_state;
    QString m_commands;
    bool m_isListening;
    bool m_needsRelaunch = false;

    std::chrono::nanoseconds m_deadline{0}; // The uptime at which the wait ends.
    bool m_isAsking = false;
    std::unique_ptr<QObject> m_asker; // Destroyed when its answer is no longer wanted.
};

} // namespace clavo
