// SPDX-License-Identifier: MIT
#include "desktop/dbus/ShortcutsPortal.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.GlobalShortcuts";

QString senderOf(const QDBusMessage& question)
{
    return question.service().mid(1).replace('.', '_');
}

} // namespace

/// The portal's registry, which takes a program once, and before it asks for anything else.
class ProgramRegistry : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.host.portal.Registry")

public:
    ProgramRegistry(ShortcutsPortal& portal, const QDBusConnection& bus)
        : QDBusAbstractAdaptor(&portal), m_portal(portal), m_bus(bus)
    {
    }

    QString program;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the bus gives the method its name.
    void Register(const QString& name, const QVariantMap& /*options*/, const QDBusMessage& question)
    {
        if (program.isEmpty() && m_portal.calls.isEmpty()) {
            program = name;
        } else {
            question.setDelayedReply(true);
            m_bus.send(question.createErrorReply(QDBusError::Failed, "Already registered"));
        }
    }

private:
    const ShortcutsPortal& m_portal;
    QDBusConnection m_bus;
};

ShortcutsPortal::ShortcutsPortal(Kind kind) : m_kind(kind)
{
    qDBusRegisterMetaType<Wish>();
    qDBusRegisterMetaType<QList<Wish>>();
    qRegisterMetaType<QList<Wish>>("QList<Wish>"); // As the slot names it.
    if (kind != Kind::draft)
        m_registry = new ProgramRegistry(*this, m_bus);
    m_bus.registerObject(path, this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAdaptors |
                             QDBusConnection::ExportAllProperties);
    EXPECT_TRUE(m_bus.registerService(service));
}

ShortcutsPortal::~ShortcutsPortal()
{
    m_bus.unregisterService(service);
    m_bus.unregisterObject(path);
}

void ShortcutsPortal::press(const QString& trigger)
{
    for (auto session = triggers.cbegin(); session != triggers.cend(); ++session) {
        if (session.value() == trigger)
            activate(session.key(), "shortcut");
    }
}

void ShortcutsPortal::activate(const QString& session, const QString& name)
{
    auto signal = QDBusMessage::createSignal(path, interface, "Activated");
    signal << QVariant::fromValue(QDBusObjectPath(session)) << name << quint64{1} << QVariantMap{};
    m_bus.send(signal);
}

void ShortcutsPortal::reachClient() const
{
    if (!client.isEmpty())
        m_bus.call(
            QDBusMessage::createMethodCall(client, "/", "org.freedesktop.DBus.Peer", "Ping"));
}

QString ShortcutsPortal::program() const
{
    return m_registry == nullptr ? QString() : m_registry->program;
}

QDBusObjectPath ShortcutsPortal::CreateSession(const QVariantMap& options,
                                               const QDBusMessage& question)
{
    note(question);
    names.push_back(options["session_handle_token"].toString());
    const auto session =
        QString("%1/session/%2/%3").arg(QString(path), senderOf(question), names.back());
    if (m_kind == Kind::remembering && m_remembered.contains(names.back()))
        triggers[session] = m_remembered[names.back()];
    QVariantMap results{{"session_handle", session}};
    if (m_kind == Kind::draft) {
        take(session, qdbus_cast<QList<Wish>>(options["shortcuts"]));
        results.insert("shortcuts", shortcuts(session));
    }
    return respond(question, options, 0, results);
}

QDBusObjectPath ShortcutsPortal::ListShortcuts(const QDBusObjectPath& session,
                                               const QVariantMap& options,
                                               const QDBusMessage& question)
{
    note(question);
    return respond(question, options, 0, {{"shortcuts", shortcuts(session.path())}});
}

QDBusObjectPath ShortcutsPortal::BindShortcuts(const QDBusObjectPath& session,
                                               const QList<Wish>& wishes, const QString& window,
                                               const QVariantMap& options,
                                               const QDBusMessage& question)
{
    note(question);
    EXPECT_EQ(window, "");
    if (m_kind != Kind::current)
        ++windows;
    if (m_kind != Kind::draft && !bindsNothing)
        take(session.path(), wishes);
    return respond(question, options, outcome, {{"shortcuts", shortcuts(session.path())}});
}

void ShortcutsPortal::note(const QDBusMessage& question)
{
    client = question.service();
    calls.push_back(question.member());
}

void ShortcutsPortal::take(const QString& session, const QList<Wish>& wishes)
{
    ASSERT_EQ(wishes.size(), 1);
    EXPECT_EQ(wishes.front().first, "shortcut");
    properties = wishes.front().second;
    if (outcome == 0) {
        triggers[session] = properties["preferred_trigger"].toString();
        m_remembered[names.back()] = triggers[session];
    }
}

QVariant ShortcutsPortal::shortcuts(const QString& session) const
{
    QList<Wish> all;
    if (triggers.contains(session))
        all.push_back({"shortcut", {{"trigger_description", triggers[session]}}});
    return QVariant::fromValue(all);
}

QDBusObjectPath ShortcutsPortal::respond(const QDBusMessage& question, const QVariantMap& options,
                                         uint result, const QVariantMap& results)
{
    const auto request =
        QString("%1/request/%2/%3")
            .arg(QString(path), senderOf(question), options["handle_token"].toString());
    auto signal = QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
    signal << result << results;
    m_bus.send(signal);
    return QDBusObjectPath(request);
}

} // namespace clavo

#include <ShortcutsPortal.moc> // Generated, in no source folder.
