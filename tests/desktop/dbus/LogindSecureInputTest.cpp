// SPDX-License-Identifier: MIT
#include "platform/dbus/LogindSecureInput.h"

#include "eventloop/EventLoop.h"
#include "fakes/SimulatedTime.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QVariantMap>

#include <gmock/gmock.h>

#include <memory>

namespace clavo
{
namespace
{

using testing::Optional;

constexpr auto service = "org.freedesktop.login1";
constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto sessionPath = "/org/freedesktop/login1/session/_37";
constexpr auto sessionInterface = "org.freedesktop.login1.Session";

// The desktop's bus is the system's bus too. The library reads the address at the first connection
// of the process, which a test of another suite may make.
[[maybe_unused]] const bool isSystemBusSet =
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));

class Manager final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the bus gives the method its name.
    QDBusObjectPath GetSession(const QString& name)
    {
        EXPECT_EQ(name, "auto");
        return QDBusObjectPath(sessionPath);
    }
};

/// A system bus with logind and one session.
class Logind final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Session")
    Q_PROPERTY(bool LockedHint MEMBER m_isLocked)
    Q_PROPERTY(bool Active MEMBER m_isActive)
    Q_PROPERTY(QString Name MEMBER m_name)

public:
    Logind(bool isLocked, bool isActive) : m_isLocked(isLocked), m_isActive(isActive)
    {
        m_bus.registerObject(managerPath, &m_manager, QDBusConnection::ExportAllSlots);
        m_bus.registerObject(sessionPath, this, QDBusConnection::ExportAllProperties);
        EXPECT_TRUE(m_bus.registerService(service));
    }
    ~Logind() override { QDBusConnection::disconnectFromBus("logind"); }

    void change(const QString& property, bool value)
    {
        auto signal = QDBusMessage::createSignal(sessionPath, "org.freedesktop.DBus.Properties",
                                                 "PropertiesChanged");
        signal << sessionInterface << QVariantMap{{property, value}} << QStringList();
        m_bus.send(signal);
    }
    void order(const QString& what)
    {
        m_bus.send(QDBusMessage::createSignal(sessionPath, sessionInterface, what));
    }

private:
    QString m_name = "user";
    bool m_isLocked;
    bool m_isActive;
    Manager m_manager;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "logind");
};

class LogindSecureInputTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { qunsetenv("XDG_SESSION_ID"); }

    [[nodiscard]] bool becomes(SecureReason reason) const
    {
        return EventLoop::until([&] { return secureInput->reason() == reason; });
    }
    void watch() { secureInput = makeLogindSecureInput(time.makeTimer()); }

    /// Watches a session that comes to the screen, which shows that it is watched.
    [[nodiscard]] bool watchesUnlocked(Logind& logind)
    {
        watch();
        if (!becomes(SecureReason::lockedSession))
            return false;
        logind.change("Active", true);
        return becomes(SecureReason::none);
    }

    EventLoop loop;
    SimulatedTime time;
    std::unique_ptr<SecureInput> secureInput;
};

TEST_F(LogindSecureInputTest, ReportsASessionThatIsLockedAtTheStart)
{
    const Logind logind(/*isLocked=*/true, /*isActive=*/true);

    watch();

    EXPECT_TRUE(becomes(SecureReason::lockedSession));
}

TEST_F(LogindSecureInputTest, FollowsTheLock)
{
    Logind logind(/*isLocked=*/true, /*isActive=*/true);
    watch();
    ASSERT_TRUE(becomes(SecureReason::lockedSession));

    logind.change("LockedHint", false);
    ASSERT_TRUE(becomes(SecureReason::none));
    logind.change("LockedHint", true);
    EXPECT_TRUE(becomes(SecureReason::lockedSession));
}

TEST_F(LogindSecureInputTest, ASessionThatIsNotAtTheScreenIsSecret)
{
    Logind logind(/*isLocked=*/false, /*isActive=*/false);
    ASSERT_TRUE(watchesUnlocked(logind));

    logind.change("Active", false);
    EXPECT_TRUE(becomes(SecureReason::lockedSession));
}

TEST_F(LogindSecureInputTest, ALockThatWasOrderedCountsAtOnceAndUntilItIsUndone)
{
    Logind logind(/*isLocked=*/false, /*isActive=*/false);
    ASSERT_TRUE(watchesUnlocked(logind));

    logind.order("Lock");
    ASSERT_TRUE(becomes(SecureReason::lockedSession));
    logind.order("Unlock");
    EXPECT_TRUE(becomes(SecureReason::none));
    EXPECT_EQ(time.untilNext(), std::nullopt);
}

TEST_F(LogindSecureInputTest, AnOrderThatNoLockFollowsIsForgotten)
{
    Logind logind(/*isLocked=*/false, /*isActive=*/false);
    ASSERT_TRUE(watchesUnlocked(logind));
    logind.order("Lock");
    ASSERT_TRUE(becomes(SecureReason::lockedSession));
    EXPECT_THAT(time.untilNext(), Optional(timeToLock));

    time.elapse();

    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(LogindSecureInputTest, AnOrderThatALockFollowsEndsWithIt)
{
    Logind logind(/*isLocked=*/false, /*isActive=*/false);
    ASSERT_TRUE(watchesUnlocked(logind));
    logind.order("Lock");
    ASSERT_TRUE(becomes(SecureReason::lockedSession));

    logind.change("LockedHint", true);
    ASSERT_TRUE(EventLoop::until([&] { return !time.untilNext(); }));
    EXPECT_EQ(secureInput->reason(), SecureReason::lockedSession);

    logind.change("LockedHint", false);
    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(LogindSecureInputTest, LogindMayComeLaterAndGo)
{
    watch();
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
    {
        const Logind logind(/*isLocked=*/true, /*isActive=*/true);
        EXPECT_TRUE(becomes(SecureReason::lockedSession));
    }

    EXPECT_TRUE(becomes(SecureReason::none));
}

} // namespace
} // namespace clavo

#include <LogindSecureInputTest.moc> // Generated, in no source folder.
