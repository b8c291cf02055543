// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalHotKeyService.h"

#include "contracts/HotKeyServiceContract.h"
#include "desktop/dbus/ShortcutsPortal.h"
#include "eventloop/EventLoop.h"
#include "fakes/FakeHotKeyService.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QStringList>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace clavo
{
namespace
{

constexpr auto chord = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;
constexpr std::uint32_t letterK = 40;

/// A desktop with a portal.
class PortalDesktop
{
public:
    HotKeyService& service() { return *m_service; }

    void strike(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        const QString shift = (modifiers & HotKeyModifier::shiftKey) != 0 ? "SHIFT+" : "";
        const QString logo = (modifiers & HotKeyModifier::cmdKey) != 0 ? "LOGO+" : "";
        m_portal.press(shift + logo + (keyCode == letterK ? "k" : "j"));
        m_portal.reachClient(); // What has been struck arrives before the next strike.
        QCoreApplication::processEvents();
    }

    template <typename Condition> bool until(Condition condition)
    {
        return EventLoop::until(condition);
    }

private:
    EventLoop m_loop;
    ShortcutsPortal m_portal;
    std::unique_ptr<HotKeyService> m_service =
        makePortalHotKeyService(std::make_unique<FakeHotKeyService>());
};

INSTANTIATE_TYPED_TEST_SUITE_P(Portal, HotKeyServiceContract, PortalDesktop);

class PortalHotKeyServiceTest : public testing::Test
{
protected:
    PortalHotKeyServiceTest() { start(); }

    /// The program, anew.
    void start()
    {
        hotKeys.reset();
        auto fake = std::make_unique<FakeHotKeyService>();
        other = fake.get();
        hotKeys = makePortalHotKeyService(std::move(fake));
    }

    void add()
    {
        ref = hotKeys->registerHotKey({.keyCode = letterK, .modifiers = chord},
                                      [this] { ++presses; });
        ASSERT_TRUE(ref);
    }

    void addAnother()
    {
        ASSERT_TRUE(hotKeys->registerHotKey({.keyCode = 38, .modifiers = chord}, [] {}));
    }

    /// Presses the shortcut, which is heard, and then waits until the portal has another one: what
    /// the program has asked for in between has arrived then.
    void pressAndSettle()
    {
        portal->press("SHIFT+LOGO+k");
        ASSERT_TRUE(EventLoop::until([this] { return presses == 1; }));
        const auto before = portal->triggers.size();
        addAnother();
        ASSERT_TRUE(EventLoop::until([&] { return portal->triggers.size() > before; }));
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
    std::unique_ptr<ShortcutsPortal> portal;
    FakeHotKeyService* other = nullptr;
    std::unique_ptr<HotKeyService> hotKeys;
    std::optional<HotKeyRef> ref;
    int presses = 0;
};

TEST_F(PortalHotKeyServiceTest, RequestsTheShortcutAndDescribesIt)
{
    portal = std::make_unique<ShortcutsPortal>();
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
    portal = std::make_unique<ShortcutsPortal>();
    portal->outcome = 2;
    add();

    EXPECT_TRUE(isGivenByTheOther());
}

TEST_F(PortalHotKeyServiceTest, TakesTheOtherServiceWhereThePortalBindsNothing)
{
    portal = std::make_unique<ShortcutsPortal>();
    portal->bindsNothing = true;
    add();

    EXPECT_TRUE(isGivenByTheOther());
}

TEST_F(PortalHotKeyServiceTest, OpensNoWindowAtAPortalThatTakesShortcutsWithTheSession)
{
    portal = std::make_unique<ShortcutsPortal>(ShortcutsPortal::Kind::draft);
    add();
    ASSERT_TRUE(isGivenByThePortal());

    pressAndSettle();

    EXPECT_EQ(portal->windows, 0);
    EXPECT_TRUE(other->registrations.empty());
}

TEST_F(PortalHotKeyServiceTest, OpensAWindowOnlyOnceAtAPortalThatRemembersTheShortcut)
{
    portal = std::make_unique<ShortcutsPortal>(ShortcutsPortal::Kind::remembering);
    add();
    ASSERT_TRUE(isGivenByThePortal());
    ASSERT_EQ(portal->windows, 1);
    portal->triggers.clear();

    start();
    add();
    ASSERT_TRUE(isGivenByThePortal());
    pressAndSettle();

    EXPECT_EQ(portal->windows, 2); // The second one is that of the other shortcut.
}

TEST_F(PortalHotKeyServiceTest, NamesTheSessionAlikeAtEveryStart)
{
    portal = std::make_unique<ShortcutsPortal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());
    portal->triggers.clear();

    start();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    ASSERT_EQ(portal->names.size(), 2);
    EXPECT_EQ(portal->names[0], portal->names[1]);
}

TEST_F(PortalHotKeyServiceTest, RegistersTheProgramBeforeItAsksForAnything)
{
    portal = std::make_unique<ShortcutsPortal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_EQ(portal->program(), "app.clavo.Clavo");
    EXPECT_EQ(portal->calls, QStringList({"CreateSession", "ListShortcuts", "BindShortcuts"}));
    // On the session's own connection other parts of a program may have asked before.
    EXPECT_NE(portal->client, QDBusConnection::sessionBus().baseService());
}

TEST_F(PortalHotKeyServiceTest, LeavesTheOtherServiceAloneWhereTheUserRefuses)
{
    portal = std::make_unique<ShortcutsPortal>();
    portal->outcome = 1;
    add();
    ASSERT_TRUE(EventLoop::until([this] { return !portal->properties.isEmpty(); }));

    // The answer to a later shortcut comes after that to the first.
    portal->outcome = 0;
    addAnother();
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_TRUE(other->registrations.empty());
}

TEST_F(PortalHotKeyServiceTest, KeepsTheOtherServiceWhenAPortalComesLater)
{
    add();
    ASSERT_TRUE(isGivenByTheOther());
    portal = std::make_unique<ShortcutsPortal>();
    addAnother();
    ASSERT_TRUE(isGivenByThePortal());

    EXPECT_EQ(portal->names.size(), 1);
}

TEST_F(PortalHotKeyServiceTest, AsksAPortalThatHasStartedAnew)
{
    portal = std::make_unique<ShortcutsPortal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());

    portal.reset();
    portal = std::make_unique<ShortcutsPortal>();
    ASSERT_TRUE(isGivenByThePortal());
    portal->press("SHIFT+LOGO+k");

    EXPECT_TRUE(EventLoop::until([this] { return presses == 1; }));
}

TEST_F(PortalHotKeyServiceTest, IsDeafToOtherShortcuts)
{
    portal = std::make_unique<ShortcutsPortal>();
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

TEST_F(PortalHotKeyServiceTest, LeavesTheBusAlthoughAShortcutHasJustEnded)
{
    portal = std::make_unique<ShortcutsPortal>();
    add();
    ASSERT_TRUE(isGivenByThePortal());
    const auto client = portal->client;

    hotKeys->unregisterHotKey(*ref);
    hotKeys.reset();

    auto* const bus = QDBusConnection::sessionBus().interface();
    EXPECT_TRUE(EventLoop::until([&] { return !bus->isServiceRegistered(client); }));
}

} // namespace
} // namespace clavo
