// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusTrayHosts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <optional>
#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");
const QString interface = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Follows the watcher, the one service of the bus that knows the hosts.
class StatusNotifierWatch : public QObject
{
    Q_OBJECT

public:
    explicit StatusNotifierWatch(TrayHosts::Receiver receiver)
        : m_receiver(std::move(receiver)),
          m_service(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
    {
        connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString&, const QString&, const QString& owner) {
                    tell(false);
                    m_answer.reset();
                    if (!owner.isEmpty())
                        ask();
                });
        for (const auto* signal :
             {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            m_bus.connect(service, path, interface, QString::fromLatin1(signal), this, SLOT(ask()));
        ask();
    }

private slots:
    /// The signals do not tell how many hosts are left.
    void ask()
    {
        auto question =
            QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
        question << interface << QStringLiteral("IsStatusNotifierHostRegistered");
        question.setAutoStartService(false);
        m_answer.emplace(m_bus.asyncCall(question));
        connect(&*m_answer, &QDBusPendingCallWatcher::finished, this, [this] {
            const QDBusPendingReply<QDBusVariant> reply = *m_answer;
            tell(reply.isValid() && reply.value().variant().toBool());
        });
    }

private:
    void tell(bool isThere)
    {
        if (m_isThere != isThere) {
            m_isThere = isThere;
            m_receiver(isThere ? TrayHost::statusNotifier : TrayHost::none);
        }
    }

    TrayHosts::Receiver m_receiver;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_service;
    std::optional<QDBusPendingCallWatcher> m_answer; // Of the last question; earlier ones are void.
    std::optional<bool> m_isThere;                   // What was told.
};

} // namespace

DBusTrayHosts::DBusTrayHosts() = default;

DBusTrayHosts::~DBusTrayHosts() = default;

void DBusTrayHosts::watch(Receiver receiver)
{
    if (QDBusConnection::sessionBus().isConnected())
        m_watch = std::make_unique<StatusNotifierWatch>(std::move(receiver));
    else
        receiver(TrayHost::none);
}

} // namespace clavo

#include <DBusTrayHosts.moc> // Generated, in no source folder.
