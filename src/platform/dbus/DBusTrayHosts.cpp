// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusTrayHosts.h"

#include "platform/dbus/DBusSignal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");
const QString interface = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Asks the watcher, the one service of the bus that knows the hosts.
class DBusTrayHosts final : public QObject, public TrayHosts
{
    Q_OBJECT

public:
    void watch(Receiver receiver) override
    {
        m_receiver = std::move(receiver);
        if (!m_bus.isConnected())
            return m_receiver(TrayHost::none);
        connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString&, const QString&, const QString& owner) {
                    setHost(false);
                    m_answer.reset();
                    if (!owner.isEmpty())
                        askForHost();
                });
        for (const auto* signal :
             {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            listen(m_bus, {service, path, interface, QString::fromLatin1(signal)}, this,
                   SLOT(askForHost()));
        askForHost();
    }

    [[nodiscard]] TrayAppearance appearance() override { return {}; }
    void dock(std::uint32_t /*window*/) override {}

private slots:
    /// The signals do not say how many hosts are left.
    void askForHost()
    {
        auto question =
            QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
        question << interface << QStringLiteral("IsStatusNotifierHostRegistered");
        question.setAutoStartService(false);
        m_answer.emplace(m_bus.asyncCall(question));
        connect(&*m_answer, &QDBusPendingCallWatcher::finished, this, [this] {
            const QDBusPendingReply<QDBusVariant> reply = *m_answer;
            setHost(reply.isValid() && reply.value().variant().toBool());
        });
    }

private:
    void setHost(bool isThere)
    {
        if (std::exchange(m_isThere, isThere) != isThere)
            m_receiver(isThere ? TrayHost::statusNotifier : TrayHost::none);
    }

    Receiver m_receiver;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_service{service, m_bus, QDBusServiceWatcher::WatchForOwnerChange};
    std::optional<QDBusPendingCallWatcher> m_answer; // To the last question; earlier ones are void.
    std::optional<bool> m_isThere;                   // As last reported.
};

} // namespace

std::unique_ptr<TrayHosts> makeDBusTrayHosts()
{
    return std::make_unique<DBusTrayHosts>();
}

} // namespace clavo

#include <DBusTrayHosts.moc> // Generated, in no source folder.
