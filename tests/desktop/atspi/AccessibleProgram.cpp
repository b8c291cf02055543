// SPDX-License-Identifier: MIT
#include "desktop/atspi/AccessibleProgram.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QVariantMap>

#include <gtest/gtest.h>

#include <utility>

namespace clavo
{

/// Names an element of any program.
struct Reference {
    QString program;
    QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference)
{
    argument.beginStructure();
    argument << reference.program << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference)
{
    argument.beginStructure();
    argument >> reference.program >> reference.path;
    argument.endStructure();
    return argument;
}

} // namespace clavo

Q_DECLARE_METATYPE(clavo::Reference)

namespace clavo
{
namespace
{

const QString launcher = QStringLiteral("org.a11y.Bus");
const QString registry = QStringLiteral("org.a11y.atspi.Registry");
const QString busConnection = QStringLiteral("test-accessibility-bus");

} // namespace

AccessibilityBus::AccessibilityBus()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, busConnection))
{
    m_bus.registerVirtualObject("/org/a11y", this, QDBusConnection::SubPath);
    EXPECT_TRUE(m_bus.registerService(registry));
    EXPECT_TRUE(m_bus.registerService(launcher));
}

AccessibilityBus::~AccessibilityBus()
{
    QDBusConnection::disconnectFromBus(busConnection);
}

bool AccessibilityBus::handleMessage(const QDBusMessage& question, const QDBusConnection& bus)
{
    if (question.member() == "GetAddress") {
        const auto address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
        return bus.send(question.createReply(address));
    }
    if (question.member() != "RegisterEvent")
        return false;
    m_registered.push_back(question.arguments().value(0).toString().toStdString());
    return true;
}

QString AccessibilityBus::introspect(const QString& /*path*/) const
{
    return {};
}

AccessibleProgram::AccessibleProgram()
    : m_name("test-program-" + QString::number(reinterpret_cast<quintptr>(this))),
      m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name))
{
    qDBusRegisterMetaType<Reference>();
    m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
}

// Calls that wait for the object end before the connection that they came by: Qt answers them with
// an error then, and crashes without the connection.
AccessibleProgram::~AccessibleProgram()
{
    m_bus.unregisterObject("/", QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(m_name);
}

void AccessibleProgram::add(const QString& element, uint role, const QString& parent)
{
    m_elements[element] = {role, parent};
}

void AccessibleProgram::deactivateWindow()
{
    send("/window", "org.a11y.atspi.Event.Window", "Deactivate", {"", 0, 0});
}

void AccessibleProgram::tellFocus(const QString& element, int focused)
{
    send(element, "org.a11y.atspi.Event.Object", "StateChanged", {"focused", focused, 0});
}

void AccessibleProgram::send(const QString& path, const QString& interface, const QString& name,
                             const QVariantList& arguments)
{
    auto signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(arguments);
    signal << QVariant::fromValue(QDBusVariant(0)) << QVariantMap();
    m_bus.send(signal);
}

void AccessibleProgram::recover()
{
    m_hangs = false;
    for (const auto& question : std::exchange(m_unanswered, {}))
        answer(question);
}

bool AccessibleProgram::handleMessage(const QDBusMessage& question, const QDBusConnection& /*bus*/)
{
    ++questions;
    if (!m_hangs)
        return answer(question);
    question.setDelayedReply(true);
    m_unanswered.push_back(question);
    return true;
}

bool AccessibleProgram::answer(const QDBusMessage& question)
{
    const auto element = m_elements.find(question.path());
    if (element == m_elements.end())
        return false;
    if (question.member() == "GetRole")
        return m_bus.send(question.createReply(element->second.role));
    if (question.member() == "GetState") {
        const QList<uint> states{isFocused ? 1U << 12U : 0U, 0U};
        return m_bus.send(question.createReply(QVariant::fromValue(states)));
    }
    if (question.arguments() != QVariantList{"org.a11y.atspi.Accessible", "Parent"})
        return false;
    const Reference parent{element->second.parent.isEmpty() ? QString() : m_bus.baseService(),
                           QDBusObjectPath(element->second.parent.isEmpty()
                                               ? "/org/a11y/atspi/null"
                                               : element->second.parent)};
    return m_bus.send(
        question.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(parent)))));
}

QString AccessibleProgram::introspect(const QString& /*path*/) const
{
    return {};
}

} // namespace clavo
