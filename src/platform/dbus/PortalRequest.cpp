// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalRequest.h"

#include <QObject>

#include <algorithm>
#include <utility>

namespace clavo
{
namespace
{

const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");

using Receiver = std::function<void(PortalOutcome outcome, const QVariantMap& results)>;

QString newToken()
{
    static int last = 0;
    return QStringLiteral("clavo_%1").arg(++last);
}

/// Waits for the answer to one call.
class Answer final : public QObject
{
    Q_OBJECT

public:
    Answer(const QDBusConnection& bus, QDBusMessage call, QVariantMap options, QObject* context,
           Receiver receiver)
        : QObject(context), m_receiver(std::move(receiver))
    {
        const auto token = newToken();
        auto sender = bus.baseService().mid(1);
        sender.replace(QLatin1Char('.'), QLatin1Char('_'));
        const auto path = objectPath + QStringLiteral("/request/%1/%2").arg(sender, token);
        // Before the call: the portal may answer at once.
        listen(bus,
               {{call.service(), path, QStringLiteral("org.freedesktop.portal.Request")},
                QStringLiteral("Response")},
               this, SLOT(receive(uint, QVariantMap)));
        options.insert(QStringLiteral("handle_token"), token);
        send(bus, call << options, this, [this](const QDBusMessage& acceptance) {
            if (acceptance.type() == QDBusMessage::ErrorMessage)
                end(PortalOutcome::failed, {});
        });
    }

private slots:
    void receive(uint outcome, const QVariantMap& results)
    {
        constexpr auto last = static_cast<uint>(PortalOutcome::failed);
        end(static_cast<PortalOutcome>(std::min(outcome, last)), results);
    }

private:
    void end(PortalOutcome outcome, const QVariantMap& results)
    {
        if (const auto receiver = std::exchange(m_receiver, nullptr)) {
            deleteLater();
            receiver(outcome, results);
        }
    }

    Receiver m_receiver;
};

} // namespace

QDBusMessage portalCall(const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(portalService, objectPath, interface, method);
}

DBusSignal portalSignal(const QString& interface, const QString& name)
{
    return {{portalService, objectPath, interface}, name};
}

void request(const QDBusConnection& bus, const QDBusMessage& call, const QVariantMap& options,
             QObject* context, Receiver receiver)
{
    new Answer(bus, call, options, context, std::move(receiver));
}

} // namespace clavo

#include <PortalRequest.moc> // Generated, in no source folder.
