// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QString>
#include <QVariantList>

#include <functional>
#include <utility>

class QObject;

namespace clavo
{

/// An object of a service, and the interface of it that is called.
struct DBusObject {
    QString service;
    QString path;
    QString interface;
};

/// The bus itself, which knows its services and connections.
[[nodiscard]] const DBusObject& messageBus();

/// A call of a method that does not start the service.
[[nodiscard]] QDBusMessage callOf(const DBusObject& object, const QString& method,
                                  const QVariantList& arguments = {});

/// A call for the value of a property, which does not start the service. The reply has a
/// QDBusVariant.
[[nodiscard]] QDBusMessage callForProperty(const DBusObject& object, const QString& property);

using DBusReceiver = std::function<void(const QDBusMessage& reply)>;

/// Sends a call and returns at once. The receiver is called from the main loop with the reply,
/// which may be an error; it is not called once the context is gone.
void send(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
          DBusReceiver receiver);

/// Sends a call and returns at once. The receiver is called from the main loop with the value of
/// the reply. It is not called if the reply is an error or of another type, or once the context is
/// gone.
template <typename Value>
void ask(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
         std::function<void(const Value&)> receiver)
{
    send(bus, call, context, [receiver = std::move(receiver)](const QDBusMessage& message) {
        if (const QDBusReply<Value> reply = message; reply.isValid())
            receiver(reply.value());
    });
}

/// A signal of the bus.
struct DBusSignal {
    DBusObject sender; // Its service and path may be empty: any.
    QString name;
    QString firstArgument = {}; // Only signals whose first argument is this text; all if null.
};

/// The signal that a connection itself gives when it loses its bus.
[[nodiscard]] const DBusSignal& lossOfBus();

/// Connects a slot to the signal, once. Qt refuses a slot that it cannot find and one with a
/// parameter whose type is not registered by its name; that is logged.
void listen(QDBusConnection bus, const DBusSignal& signal, QObject* receiver, const char* slot);

} // namespace clavo
