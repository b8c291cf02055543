// SPDX-License-Identifier: MIT
#include "platform/dbus/ScreenSaverSecureInput.h"

#include "platform/dbus/DBusQuestion.h"
#include "platform/dbus/DBusSignal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
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

const QString bus = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

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
    /// Listens to every sender: to name one would mean to wait for the bus to look up the name's
    /// owner.
    void watchScreenSaver(const ScreenSaver& screenSaver)
    {
        const auto name = QString::fromLatin1(screenSaver.name);
        listen(m_bus, {{}, {}, name, QStringLiteral("ActiveChanged")}, this,
               SLOT(receiveChange(bool, QDBusMessage)));
        auto question = QDBusMessage::createMethodCall(name, QString::fromLatin1(screenSaver.path),
                                                       name, QStringLiteral("GetActive"));
        question.setAutoStartService(false);
        auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            answer->deleteLater();
            if (const QDBusPendingReply<bool> reply = *answer; reply.isValid())
                setActive(reply.reply().service(), reply.value());
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
        auto question =
            QDBusMessage::createMethodCall(bus, busPath, bus, QStringLiteral("NameHasOwner"));
        ask<bool>(m_bus, question << owner, this, [this, owner](bool hasOwner) {
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
