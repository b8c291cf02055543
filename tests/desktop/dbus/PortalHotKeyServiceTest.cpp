// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalHotKeyService.h"

#include "contracts/HotKeyServiceContract.h"
#include "desktop/x11/EventLoop.h"
#include "fakes/FakeHotKeyService.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QPair>
#include <QVariantMap>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace clavo
{
namespace
{

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto chord = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;
constexpr std::uint32_t letterK = 40;

using Wish = QPair<QString, QVariantMap>;

/// Asks the bus something, so that what was under way before has arrived.
void reach(const QDBusConnection& bus)
{
    EXPECT_TRUE(bus.interface()->isServiceRegistered(service));
}

/// A portal with shortcuts, on a connection of its own. It gives every shortcut the keys that are
/// wished for.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")
    Q_PROPERTY(uint version MEMBER m_version)

public:
    Portal()
    {
        qDBusRegisterMetaType<Wish>();
        qDBusRegisterMetaType<QList<Wish>>();
        qRegisterMetaType<QList<Wish>>("QList<Wish>"); // As the slot names it.
        m_bus.registerObject(
            path, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
        EXPECT_TRUE(m_bus.registerService(service));
    }
    ~Portal() override
    {
        m_bus.unregisterService(service);
        m_bus.unregisterObject(path);
    }

    void press(const QString& trigger)
    {
        for (auto session = triggers.cbegin(); session != triggers.cend(); ++session) {
            if (session.value() == trigger)
                activate(session.key(), "shortcut");
        }
    }

    void activate(const QString& session, const QString& name)
    {
        auto signal =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.GlobalShortcuts", "Activated");
        signal << QVariant::fromValue(QDBusObjectPath(session)) << name << quint64{1}
               << QVariantMap{};
        m_bus.send(signal);
    }

    /// Returns once the bus has what was sent.
    void reachBus() const { reach(m_bus); }

    uint outcome = 0;                // Of every binding.
    int sessions = 0;                // That were ever made.
    QVariantMap properties;          // Of the last shortcut.
    QMap<QString, QString> triggers; // By session.

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the bus gives the methods their names.
    QDBusObjectPath CreateSession(const QVariantMap& options, const QDBusMessage& question)
    {
        ++sessions;
        const auto session =
            QString("%1/session/%2/%3")
                .arg(QString(path), sender(question), options["session_handle_token"].toString());
        EXPECT_TRUE(m_bus.registerObject(session, this, QDBusConnection::ExportAllSlots));
        return respond(question, options, 0, {{"session_handle", session}});
    }

    QDBusObjectPath BindShortcuts(const QDBusObjectPath& session, const QList<Wish>& wishes,
                                  const QString& window, const QVariantMap& options,
                                  const QDBusMessage& question)
    {
        EXPECT_EQ(window, "");
        EXPECT_EQ(wishes.size(), 1);
        properties = wishes.front().second;
        if (outcome == 0)
            triggers[session.path()] = properties["preferred_trigger"].toString();
        return respond(question, options, outcome, {});
    }
    // NOLINTEND(readability-identifier-naming)

private:
    static QString sender(const QDBusMessage& question)
    {
        return question.service().mid(1).replace('.', '_');
    }

    /// As a portal may: before the call has returned.
    QDBusObjectPath respond(const QDBusMessage& question, const QVariantMap& options, uint result,
                            const QVariantMap& results)
    {
        const auto request =
            QString("%1/request/%2/%3")
                .arg(QString(path), sender(question), options["handle_token"].toString());
        auto signal =
            QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
        signal << result << results;
        m_bus.send(signal);
        return QDBusObjectPath(request);
    }

    uint m_version = 1;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

/// A desktop with a portal.
class PortalDesktop
{
public:
    HotKeyService& service() { return m_service; }

    void strike(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        const QString shift = (modifiers & HotKeyModifier::shiftKey) != 0 ? "SHIFT+" : "";
        const QString logo = (modifiers & HotKeyModifier::cmdKey) != 0 ? "LOGO+" : "";
        m_portal.press(shift + logo + (keyCode == letterK ? "k" : "j"));
        // What has been struck arrives before the next strike.
        m_portal.reachBus();
        reach(QDBusConnection::sessionBus());
        QCoreApplication::processEvents();
    }

    template <typename Condition> bool until(Condition condition)
    {
        return EventLoop::until(condition);
    }

private:
    EventLoop m_loop;
    Portal m_portal;
    PortalHotKeyService m_service{std::make_unique<FakeHotKeyService>()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Portal, HotKeyServiceContract, PortalDesktop);

class PortalHotKeyServiceTest : public testing::Test
{
protected:
    PortalHotKeyServiceTest()
    {
        auto fake = std::make_unique<FakeHotKeyService>();
        other = fake.get();
        hotKeys = std::make_unique<PortalHotKeyService>(std::move(fake));
    }

    void add()
    {
        ref = hotKeys->registerHotKey({.keyCode = letterK, .modifiers = chord},
                                      [this] { ++presses; });
        ASSERT_TRUE(ref);
    }

    [[nodiscard]] bool isGivenByThePortal()
    {
        return EventLoop::until([this] { return !portal->triggers.isEmpty(); });
    }
    [[nodiscard]] bool isGivenByTheOther()
    {
        return EventLoop::until([this] { return !other->registrations.empty(); });
    }

    EventLoop loop;
    std::unique_ptr<Portal> portal;
    FakeHotKeyService* other = nullptr;
    std::unique_ptr<PortalHotKeyService> hotKeys;
    std::optional<HotKeyRef> ref;
    int presses = 0;
};

TEST_F(PortalHotKeyServiceTest, WishesForTheKeysAndSaysWhatTheyDo)
{
    portal = std::make_unique<Portal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_EQ(portal->properties["preferred_trigger"].toString(), "SHIFT+LOGO+k");
    EXPECT_EQ(portal->properties["description"].toString(), "Turn the sounds of Clavo on or off");
    EXPECT_TRUE(other->registrations.empty());
}

TEST_F(PortalHotKeyServiceTest, TakesTheOtherServiceWhereThePortalHasNoShortcuts)
{
    add();

    ASSERT_TRUE(isGivenByTheOther());
    other->press(letterK, chord);

    EXPECT_EQ(presses, 1);
}

TEST_F(PortalHotKeyServiceTest, TakesTheOtherServiceWhereThePortalFails)
{
    portal = std::make_unique<Portal>();
    portal->outcome = 2;
    add();

    EXPECT_TRUE(isGivenByTheOther());
}

TEST_F(PortalHotKeyServiceTest, LeavesTheOtherServiceAloneWhereTheUserRefuses)
{
    portal = std::make_unique<Portal>();
    portal->outcome = 1;
    add();
    ASSERT_TRUE(EventLoop::until([this] { return !portal->properties.isEmpty(); }));

    // The answer to a later shortcut comes after that to the first.
    portal->outcome = 0;
    static_cast<void>(hotKeys->registerHotKey({.keyCode = 38, .modifiers = chord}, [] {}));
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_TRUE(other->registrations.empty());
}

TEST_F(PortalHotKeyServiceTest, StaysWithTheOtherServiceWhenAPortalComesLater)
{
    add();
    ASSERT_TRUE(isGivenByTheOther());
    portal = std::make_unique<Portal>();
    static_cast<void>(hotKeys->registerHotKey({.keyCode = 38, .modifiers = chord}, [] {}));
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_EQ(portal->sessions, 1);
}

TEST_F(PortalHotKeyServiceTest, AsksAPortalThatHasStartedAnew)
{
    portal = std::make_unique<Portal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    portal.reset();
    portal = std::make_unique<Portal>();
    ASSERT_TRUE(isGivenByThePortal());
    portal->press("SHIFT+LOGO+k");

    EXPECT_TRUE(EventLoop::until([this] { return presses == 1; }));
}

TEST_F(PortalHotKeyServiceTest, IsDeafToOtherShortcuts)
{
    portal = std::make_unique<Portal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    portal->activate(portal->triggers.firstKey(), "another");
    portal->activate("/org/freedesktop/portal/desktop/session/1_1/another", "shortcut");
    portal->press("SHIFT+LOGO+k");

    ASSERT_TRUE(EventLoop::until([this] { return presses > 0; }));
    EXPECT_EQ(presses, 1);
}

TEST_F(PortalHotKeyServiceTest, GivesTheOtherServiceItsShortcutBack)
{
    add();
    ASSERT_TRUE(isGivenByTheOther());

    hotKeys->unregisterHotKey(*ref);

    EXPECT_TRUE(other->registrations.empty());
}

} // namespace
} // namespace clavo

#include <PortalHotKeyServiceTest.moc> // Generated, in no source folder.
