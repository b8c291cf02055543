// SPDX-License-Identifier: MIT
#include "platform/dbus/ScreenSaverSecureInput.h"

#include "platform/dbus/DBusMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>

#include <array>

namespace clavo
{
namespace
{

struct ScreenSaver {
    const char* name; // Of the service, and of its interface.
    const char* path;
};

constexpr std::array screenSavers{
    ScreenSaver{"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"},
    ScreenSaver{"org.gnome.ScreenSaver", "/org/gnome/ScreenSaver"},
    ScreenSaver{"org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver"},
    ScreenSaver{"org.mate.ScreenSaver", "/org/mate/ScreenSaver"},
    ScreenSaver{"org.xfce.ScreenSaver", "/org/xfce/ScreenSaver"},
};

class ScreenSaverSecureInput final : public QObject, public ObservableSecureInput
{
    Q_OBJECT

public:
    ScreenSaverSecureInput()
    {
        if (!m_bus.isConnected())
            return;
        connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString& owner) { setActive(owner, false); });
        for (const auto& screenSaver : screenSavers)
            watchScreenSaver(screenSaver);
    }

private slots:
    void receiveChange(bool isActive, const QDBusMessage& signal)
    {
        setActive(signal.service(), isActive);
    }

private:
    /// Listens to every sender: for a sender's name Qt would wait until the bus has looked up the
    /// name's owner.
    void watchScreenSaver(const ScreenSaver& screenSaver)
    {
        const auto name = QString::fromLatin1(screenSaver.name);
        listen(m_bus, {{{}, {}, name}, QStringLiteral("ActiveChanged")}, this,
               SLOT(receiveChange(bool, QDBusMessage)));
        const auto call = callOf({name, QString::fromLatin1(screenSaver.path), name},
                                 QStringLiteral("GetActive"));
        send(m_bus, call, this, [this](const QDBusMessage& message) {
            if (const QDBusReply<bool> reply = message; reply.isValid())
                setActive(message.service(), reply.value());
        });
    }

    void setActive(const QString& owner, bool isActive)
    {
        if (!isActive) {
            m_active.remove(owner);
            m_owners.removeWatchedService(owner);
            return updateReason();
        }
        m_active.insert(owner);
        updateReason();
        m_owners.addWatchedService(owner);
        // It may have left before it was watched.
        const auto call = callOf(messageBus(), QStringLiteral("NameHasOwner"), {owner});
        ask<bool>(m_bus, call, this, [this, owner](bool hasOwner) {
            if (!hasOwner)
                setActive(owner, false);
        });
    }

    void updateReason()
    {
        setReason(m_active.isEmpty() ? SecureReason::none : SecureReason::lockedSession);
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_owners{{}, m_bus, QDBusServiceWatcher::WatchForUnregistration};
    QSet<QString> m_active; // The connections whose screen saver is active.
};

} // namespace

std::unique_ptr<ObservableSecureInput> makeScreenSaverSecureInput()
{
    return std::make_unique<ScreenSaverSecureInput>();
}

} // namespace clavo

#include <ScreenSaverSecureInput.moc> // Generated, in no source folder.
