// SPDX-License-Identifier: MIT
#include "platform/dbus/LogindSecureInput.h"

#include "platform/dbus/DBusQuestion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <QVariantMap>

#include <functional>
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

/// "auto" is logind's own name for the session the caller is in, or else for its user's.
QString sessionName()
{
    const auto name = qEnvironmentVariable("XDG_SESSION_ID");
    return name.isEmpty() ? QStringLiteral("auto") : name;
}

QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                  const QString& argument)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setAutoStartService(false);
    return message << argument;
}

} // namespace

class LogindSecureInput::Session final : public QObject
{
    Q_OBJECT

public:
    using Receiver = std::function<void(bool isSecret)>;

    Session(std::unique_ptr<Timer> timer, Receiver receiver)
        : m_timer(std::move(timer)), m_receiver(std::move(receiver))
    {
        connect(&m_logind, &QDBusServiceWatcher::serviceRegistered, this, &Session::find);
        connect(&m_logind, &QDBusServiceWatcher::serviceUnregistered, this, &Session::forget);
        if (m_bus.isConnected())
            find();
    }

private slots:
    void change(const QString& /*interface*/, const QVariantMap& changed,
                const QStringList& /*invalidated*/)
    {
        take(changed);
    }

    void expectLock()
    {
        setLocking(true);
        m_timer->start(timeToLock, [this] { setLocking(false); });
    }

    void unlock() { setLocking(false); }

private:
    void find()
    {
        const auto question =
            call(managerPath, managerInterface, QStringLiteral("GetSession"), sessionName());
        ask<QDBusObjectPath>(m_bus, question, this,
                             [this](const QDBusObjectPath& session) { follow(session.path()); });
    }

    void follow(const QString& session)
    {
        if (std::exchange(m_followed, session) != session) {
            m_bus.connect(service, session, properties, QStringLiteral("PropertiesChanged"), this,
                          SLOT(change(QString, QVariantMap, QStringList)));
            m_bus.connect(service, session, sessionInterface, QStringLiteral("Lock"), this,
                          SLOT(expectLock()));
            m_bus.connect(service, session, sessionInterface, QStringLiteral("Unlock"), this,
                          SLOT(unlock()));
        }
        const auto question = call(session, properties, QStringLiteral("GetAll"), sessionInterface);
        ask<QVariantMap>(m_bus, question, this, [this](const QVariantMap& all) { take(all); });
    }

    void take(const QVariantMap& state)
    {
        m_isActive = state.value(QStringLiteral("Active"), m_isActive).toBool();
        const auto hint = state.find(QStringLiteral("LockedHint"));
        m_isLocked = hint == state.end() ? m_isLocked : hint->toBool();
        setLocking(hint == state.end() && m_isLocking);
    }

    void forget()
    {
        m_isLocked = false;
        m_isActive = true;
        setLocking(false);
    }

    /// Of the changes of the state always the last.
    void setLocking(bool isLocking)
    {
        m_isLocking = isLocking;
        if (!isLocking)
            m_timer->stop();
        m_receiver(m_isLocked || m_isLocking || !m_isActive);
    }

    std::unique_ptr<Timer> m_timer;
    Receiver m_receiver;
    QDBusConnection m_bus = QDBusConnection::systemBus();
    QDBusServiceWatcher m_logind{service, m_bus};
    QString m_followed; // Path of the session.
    bool m_isLocked = false;
    bool m_isLocking = false; // Ordered to, not known to be.
    bool m_isActive = true;
};

LogindSecureInput::LogindSecureInput(std::unique_ptr<Timer> timer)
    : m_session(std::make_unique<Session>(std::move(timer), [this](bool isSecret) {
          setReason(isSecret ? SecureReason::lockedSession : SecureReason::none);
      }))
{
}

LogindSecureInput::~LogindSecureInput() = default;

} // namespace clavo

#include <LogindSecureInput.moc> // Generated, in no source folder.
