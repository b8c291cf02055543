// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "app/Platform.h"
#include "input/InputMonitor.h"
#include "time/Timer.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// The permission to listen: asked for, waited for, and used once it is granted.
///
/// A wait asks every two seconds for ten minutes whether it is granted by now. The question goes to
/// a fresh process, since a running one may keep its first answer for good. At most one such
/// process of a wait runs at a time, even one that takes longer than two seconds. When it is
/// granted, the program is started anew. Thread: main.
class Permission : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool listening READ isListening NOTIFY changed)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY changed)
    Q_PROPERTY(bool needsLogin READ needsLogin NOTIFY changed)
    Q_PROPERTY(bool lacksKeyboard READ lacksKeyboard NOTIFY changed)
    Q_PROPERTY(QString commands READ commands NOTIFY changed)

public:
    /// Asks without blocking and gives the answer to the receiver later, on the main thread. An
    /// answer that comes after the end of the asker is dropped.
    using Ask = std::function<void(QObject* asker, std::function<void(bool granted)> receiver)>;

    struct Surroundings {
        std::unique_ptr<Timer> timer;
        std::function<std::chrono::nanoseconds()> uptime; // Since any origin.
        std::function<std::chrono::system_clock::time_point()> wallClock;
        Ask askFreshProcess;
    };

    /// The services and the monitor outlive it.
    Permission(const Platform& platform, InputMonitor& input, Surroundings surroundings);

    /// Starts listening, or requests the permission when that fails.
    void start();
    /// Asks for the permission at the user's wish and waits for it; shows the user where it is
    /// granted if it is not yet. An earlier wait ends, and an answer still on its way to it is
    /// ignored.
    Q_INVOKABLE void request();
    /// Starts the program anew in the place of this process.
    Q_INVOKABLE void relaunch();

    /// The input monitor is listening.
    [[nodiscard]] bool isListening() const { return m_isListening; }
    /// The permission was granted, but the program has just relaunched itself for it and leaves the
    /// next time to the user.
    [[nodiscard]] bool needsRelaunch() const { return m_needsRelaunch; }
    /// The permission was granted and counts from the user's next login.
    [[nodiscard]] bool needsLogin() const { return lacks(InputAccess::State::notInThisLogin); }
    /// There is no keyboard that the permission could be for.
    [[nodiscard]] bool lacksKeyboard() const { return lacks(InputAccess::State::noKeyboard); }
    /// What grants the permission when it is typed into a terminal, a line each; empty when the
    /// program can ask for it.
    [[nodiscard]] QString commands() const { return m_commands; }
    [[nodiscard]] bool isWaiting() const { return m_surroundings.timer->isRunning(); }

signals:
    void changed();

private:
    bool startListening();
    void request(InputAccess::Occasion occasion);
    void refresh();
    [[nodiscard]] bool lacks(InputAccess::State what) const;
    void scheduleTick();
    void tick();
    void receive(bool granted);
    void relaunchUnlessJustRelaunched();

    InputAccess& m_access;
    DefaultsStore& m_defaults;
    Relauncher& m_relauncher;
    InputMonitor& m_input;
    Surroundings m_surroundings;
    // As of the last refresh, which looks at every input device.
    InputAccess::State m_state;
    QString m_commands;
    bool m_isListening;
    bool m_needsRelaunch = false;

    std::chrono::nanoseconds m_deadline{0}; // Of the wait, uptime.
    bool m_isAsking = false;
    std::unique_ptr<QObject> m_asker; // Of this wait; null after one that has given up.
};

} // namespace clavo
