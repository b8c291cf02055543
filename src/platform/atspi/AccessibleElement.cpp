// SPDX-License-Identifier: MIT
#include "platform/atspi/AccessibleElement.h"

#include "platform/dbus/DBusQuestion.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QList>
#include <QVariant>

#include <utility>

namespace clavo::atspi
{
namespace
{

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString bus = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

constexpr uint passwordText = 40; // Of the roles.
constexpr uint focused = 12;      // Of the states, each of which is a bit.

QDBusMessage call(const Element& element, const QString& interface, const QString& method)
{
    auto message = QDBusMessage::createMethodCall(element.program, element.path, interface, method);
    message.setAutoStartService(false);
    return message;
}

QDBusMessage callForRole(const Element& element)
{
    return call(element, accessible, QStringLiteral("GetRole"));
}

/// Empty if the value is no reference to an element.
Element elementOf(const QVariant& reference)
{
    if (!reference.canConvert<QDBusArgument>())
        return {};
    const auto argument = reference.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)"))
        return {};
    Element element;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> element.program >> path;
    argument.endStructure();
    element.path = path.path();
    return element;
}

} // namespace

void askPasswordField(const QDBusConnection& connection, const Element& element, QObject* context,
                      const std::function<void(bool)>& receiver)
{
    const auto checkParentsRole = [receiver](uint role) { receiver(role == passwordText); };
    const auto checkParent = [connection, context, receiver,
                              checkParentsRole](const QDBusVariant& reference) {
        const auto parent = elementOf(reference.variant());
        if (parent.program.isEmpty())
            receiver(false);
        else
            ask<uint>(connection, callForRole(parent), context, checkParentsRole);
    };
    ask<uint>(connection, callForRole(element), context,
              [connection, element, context, receiver, checkParent](uint role) {
                  if (role == passwordText)
                      return receiver(true);
                  auto question = call(element, properties, QStringLiteral("Get"));
                  question << accessible << QStringLiteral("Parent");
                  ask<QDBusVariant>(connection, question, context, checkParent);
              });
}

void askFocused(const QDBusConnection& connection, const Element& element, QObject* context,
                std::function<void(bool)> receiver)
{
    ask<QList<uint>>(connection, call(element, accessible, QStringLiteral("GetState")), context,
                     [receiver = std::move(receiver)](const QList<uint>& states) {
                         receiver((states.value(0) >> focused & 1U) != 0);
                     });
}

void askProcess(const QDBusConnection& connection, const QString& program, QObject* context,
                std::function<void(pid_t)> receiver)
{
    auto question = QDBusMessage::createMethodCall(bus, busPath, bus,
                                                   QStringLiteral("GetConnectionUnixProcessID"));
    ask<uint>(
        connection, question << program, context,
        [receiver = std::move(receiver)](uint process) { receiver(static_cast<pid_t>(process)); });
}

} // namespace clavo::atspi
