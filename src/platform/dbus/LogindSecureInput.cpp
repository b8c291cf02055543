// SPDX-License-Identifier: MIT
#include "platform/dbus/LogindSecureInput.h"

#include "platform/dbus/DBusMessages.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// "auto" is logind's name for the caller's session, or else for the one of the caller's user.
QString sessionName()
{
    const auto name = qEnvironmentVariable("XDG_SESSION_ID");
    return name.isEmpty() ? QStringLiteral("auto") : name;
}

class LogindSecureInput final : public QObject, public ObservableSecureInput
{
    Q_OBJECT

public:
    explicit LogindSecureInput(std::unique_ptr<Timer> timer) : m_timer(std::move(timer))
    {
        connect(&m_logind, &QDBusServiceWatcher::serviceRegistered, this,
                &LogindSecureInput::findSession);
        connect(&m_logind, &QDBusServiceWatcher::serviceUnregistered, this,
                &LogindSecureInput::forgetSession);
        if (m_bus.isConnected())
            findSession();
    }

private slots:
    void receiveChange(const QString& /*interface*/, const QVariantMap& state,
                       const QStringList& /*invalidated*/)
    {
        applyState(state);
    }

    void expectLock()
    {
        setLocking(true);
        m_timer->start(timeToLock, [this] { setLocking(false); });
    }

    void endLock() { setLocking(false); }

private:
    void findSession()
    {
        const auto call = callOf({service, managerPath, managerInterface},
                                 QStringLiteral("GetSession"), {sessionName()});
        ask<QDBusObjectPath>(m_bus, call, this, [this](const QDBusObjectPath& session) {
            watchSession(session.path());
        });
    }

    void watchSession(const QString& session)
    {
        if (std::exchange(m_session, session) != session) {
            listen(m_bus, {{service, session, properties}, QStringLiteral("PropertiesChanged")},
                   this, SLOT(receiveChange(QString, QVariantMap, QStringList)));
            listen(m_bus, {{service, session, sessionInterface}, QStringLiteral("Lock")}, this,
                   SLOT(expectLock()));
            listen(m_bus, {{service, session, sessionInterface}, QStringLiteral("Unlock")}, this,
                   SLOT(endLock()));
        }
        const auto call =
            callOf({service, session, properties}, QStringLiteral("GetAll"), {sessionInterface});
        ask<QVariantMap>(m_bus, call, this, [this](const QVariantMap& all) { applyState(all); });
    }

    void applyState(const QVariantMap& state)
    {
        m_isActive = state.value(QStringLiteral("Active"), m_isActive).toBool();
        const auto hint = state.find(QStringLiteral("LockedHint"));
        m_isLocked = hint == state.end() ? m_isLocked : hint->toBool();
        setLocking(hint == state.end() && m_isLocking);
    }

    void forgetSession()
    {
        m_isLocked = false;
        m_isActive = true;
        setLocking(false);
    }

    /// Called last in every state change.
    void setLocking(bool isLocking)
    {
        m_isLocking = isLocking;
        if (!isLocking)
            m_timer->stop();
        const bool isSecure = m_isLocked || m_isLocking || !m_isActive;
        setReason(isSecure ? SecureReason::lockedSession : SecureReason::none);
    }

    std::unique_ptr<Timer> m_timer;
    QDBusConnection m_bus = QDBusConnection::systemBus();
    QDBusServiceWatcher m_logind{service, m_bus};
    QString m_session; // Its path; empty until logind has answered.
    bool m_isLocked = false;
    bool m_isLocking = false; // A Lock signal has come, and no LockedHint yet.
    bool m_isActive = true;
};

} // namespace

std::unique_ptr<ObservableSecureInput> makeLogindSecureInput(std::unique_ptr<Timer> timer)
{
    return std::make_unique<LogindSecureInput>(std::move(timer));
}

} // namespace clavo

#include <LogindSecureInput.moc> // Generated, in no source folder.
