// SPDX-License-Identifier: MIT
#include "platform/dbus/ScreenSaverSecureInput.h"

#include "platform/dbus/DBusQuestion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QSet>

#include <array>
#include <functional>
#include <utility>

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

} // namespace

class ScreenSaverSecureInput::Watch final : public QObject
{
    Q_OBJECT

public:
    explicit Watch(std::function<void(bool isActive)> receiver) : m_receiver(std::move(receiver))
    {
        if (!m_bus.isConnected())
            return;
        connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString& owner) { set(owner, false); });
        for (const auto& screenSaver : screenSavers)
            follow(screenSaver);
    }

private slots:
    void change(bool isActive, const QDBusMessage& signal) { set(signal.service(), isActive); }

private:
    /// Whoever sends the signal: to name the sender would mean to wait for the bus to tell who has
    /// the name.
    void follow(const ScreenSaver& screenSaver)
    {
        const auto name = QString::fromLatin1(screenSaver.name);
        m_bus.connect({}, {}, name, QStringLiteral("ActiveChanged"), this,
                      SLOT(change(bool, QDBusMessage)));
        auto question = QDBusMessage::createMethodCall(name, QString::fromLatin1(screenSaver.path),
                                                       name, QStringLiteral("GetActive"));
        question.setAutoStartService(false);
        auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            answer->deleteLater();
            if (const QDBusPendingReply<bool> reply = *answer; reply.isValid())
                set(reply.reply().service(), reply.value());
        });
    }

    void set(const QString& owner, bool isActive)
    {
        if (!isActive) {
            m_active.remove(owner);
            m_owners.removeWatchedService(owner);
            return m_receiver(!m_active.isEmpty());
        }
        m_active.insert(owner);
        m_receiver(true);
        m_owners.addWatchedService(owner);
        // It may have left before it was watched.
        auto question =
            QDBusMessage::createMethodCall(bus, busPath, bus, QStringLiteral("NameHasOwner"));
        ask<bool>(m_bus, question << owner, this, [this, owner](bool isThere) {
            if (!isThere)
                set(owner, false);
        });
    }

    std::function<void(bool isActive)> m_receiver;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_owners{{}, m_bus, QDBusServiceWatcher::WatchForUnregistration};
    QSet<QString> m_active; // The connections whose screen saver is.
};

ScreenSaverSecureInput::ScreenSaverSecureInput()
    : m_watch(std::make_unique<Watch>([this](bool isActive) {
          setReason(isActive ? SecureReason::lockedSession : SecureReason::none);
      }))
{
}

ScreenSaverSecureInput::~ScreenSaverSecureInput() = default;

} // namespace clavo

#include <ScreenSaverSecureInput.moc> // Generated, in no source folder.
