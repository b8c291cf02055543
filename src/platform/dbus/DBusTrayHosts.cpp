// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusTrayHosts.h"

#include "platform/dbus/DBusMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
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

/// The one service of the bus that knows the hosts.
const DBusObject watcher{.service = QStringLiteral("org.kde.StatusNotifierWatcher"),
                         .path = QStringLiteral("/StatusNotifierWatcher"),
                         .interface = QStringLiteral("org.kde.StatusNotifierWatcher")};

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
                    ++m_lastQuestion; // A reply under way is void.
                    if (!owner.isEmpty())
                        askForHost();
                });
        for (const auto* signal :
             {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            listen(m_bus, {watcher, QString::fromLatin1(signal)}, this, SLOT(askForHost()));
        askForHost();
    }

    [[nodiscard]] TrayAppearance appearance() override { return {}; }
    void dock(std::uint32_t /*window*/) override {}

private slots:
    /// The signals do not say how many hosts are left.
    void askForHost()
    {
        const auto call =
            callForProperty(watcher, QStringLiteral("IsStatusNotifierHostRegistered"));
        send(m_bus, call, this, [this, question = ++m_lastQuestion](const QDBusMessage& message) {
            const QDBusReply<QDBusVariant> reply = message;
            if (question == m_lastQuestion)
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
    QDBusServiceWatcher m_service{watcher.service, m_bus, QDBusServiceWatcher::WatchForOwnerChange};
    int m_lastQuestion = 0;        // Replies to earlier questions are void.
    std::optional<bool> m_isThere; // The state that was reported last.
};

} // namespace

std::unique_ptr<TrayHosts> makeDBusTrayHosts()
{
    return std::make_unique<DBusTrayHosts>();
}

} // namespace clavo

#include <DBusTrayHosts.moc> // Generated, in no source folder.
