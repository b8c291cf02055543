// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusMessages.h"

#include "log/Log.h"

#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QStringList>

namespace clavo
{

const DBusObject& messageBus()
{
    static const DBusObject bus{.service = QStringLiteral("org.freedesktop.DBus"),
                                .path = QStringLiteral("/org/freedesktop/DBus"),
                                .interface = QStringLiteral("org.freedesktop.DBus")};
    return bus;
}

QDBusMessage callOf(const DBusObject& object, const QString& method, const QVariantList& arguments)
{
    auto call =
        QDBusMessage::createMethodCall(object.service, object.path, object.interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage callForProperty(const DBusObject& object, const QString& property)
{
    return callOf({object.service, object.path, QStringLiteral("org.freedesktop.DBus.Properties")},
                  QStringLiteral("Get"), {object.interface, property});
}

void send(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
          DBusReceiver receiver)
{
    auto* const reply = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, context,
                     [reply, receiver = std::move(receiver)] {
                         reply->deleteLater();
                         receiver(reply->reply());
                     });
}

const DBusSignal& lossOfBus()
{
    static const DBusSignal loss{
        .sender = {.service = {},
                   .path = QStringLiteral("/org/freedesktop/DBus/Local"),
                   .interface = QStringLiteral("org.freedesktop.DBus.Local")},
        .name = QStringLiteral("Disconnected")};
    return loss;
}

void listen(QDBusConnection bus, const DBusSignal& signal, QObject* receiver, const char* slot)
{
    const auto arguments =
        signal.firstArgument.isNull() ? QStringList() : QStringList{signal.firstArgument};
    if (!bus.connect(signal.sender.service, signal.sender.path, signal.sender.interface,
                     signal.name, arguments, {}, receiver, slot))
        log::error("signal D-Bus refusé : {}.{}", signal.sender.interface.toStdString(),
                   signal.name.toStdString());
}

} // namespace clavo
