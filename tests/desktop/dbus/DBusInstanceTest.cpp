// SPDX-License-Identifier: MIT
#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QVariantMap>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>

#include <sys/prctl.h>
#include <sys/types.h>

namespace clavo
{
namespace
{

/// A process of the session that prints what happens to it.
class Probe
{
public:
    explicit Probe(const QString& word, const QString& bus = {})
    {
        if (!bus.isEmpty()) {
            auto environment = QProcessEnvironment::systemEnvironment();
            environment.insert("DBUS_SESSION_BUS_ADDRESS", bus);
            m_process.setProcessEnvironment(environment);
        }
        m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(CLAVO_INSTANCE_PROBE, {word});
    }
    ~Probe()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    /// The next word it prints; empty when it has ended instead.
    [[nodiscard]] std::string next()
    {
        EXPECT_TRUE(EventLoop::until([this] {
            return m_process.canReadLine() || m_process.state() == QProcess::NotRunning;
        }));
        return m_process.readLine().trimmed().toStdString();
    }

    void stop() const { kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }
    void goOn() const { kill(static_cast<pid_t>(m_process.processId()), SIGCONT); }

private:
    QProcess m_process;
};

std::string outcome(const QString& word)
{
    return Probe(word).next();
}

class DBusInstanceTest : public testing::Test
{
protected:
    /// Calls a method as any program of the session may.
    static QDBusMessage call(const QString& interface, const QString& method,
                             const QVariantList& arguments)
    {
        auto message = QDBusMessage::createMethodCall("app.clavo.Clavo", "/app/clavo/Clavo",
                                                      interface, method);
        message.setArguments(arguments);
        return QDBusConnection::sessionBus().call(message);
    }

    EventLoop m_loop;
};

TEST_F(DBusInstanceTest, FirstProcessIsTheInstanceAndTheNextIsNot)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    EXPECT_EQ(outcome("claim"), "second");
}

TEST_F(DBusInstanceTest, PlaceIsFreeAfterTheInstanceWasKilled)
{
    {
        Probe first("claim");
        EXPECT_EQ(first.next(), "first");
    }

    EXPECT_EQ(outcome("claim"), "first");
}

TEST_F(DBusInstanceTest, RequestsReachTheInstance)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    EXPECT_EQ(outcome("openPanel"), "delivered");
    EXPECT_EQ(first.next(), "openPanel");
    EXPECT_EQ(outcome("toggle"), "delivered");
    EXPECT_EQ(first.next(), "toggle");
}

TEST_F(DBusInstanceTest, ASecondStartHandsItsRightToTheFrontOn)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    qputenv("XDG_ACTIVATION_TOKEN", "a token");
    const auto delivery = outcome("openPanel");
    qunsetenv("XDG_ACTIVATION_TOKEN");

    EXPECT_EQ(delivery, "delivered");
    EXPECT_EQ(first.next(), "a token");
    EXPECT_EQ(first.next(), "openPanel");
}

TEST_F(DBusInstanceTest, TokenThatIsTooLongIsIgnored)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");
    const auto activate = [](const QString& token) {
        return call("org.freedesktop.Application", "Activate",
                    {QVariantMap{{"activation-token", token}}});
    };

    EXPECT_EQ(activate(QString(4097, 'a')).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.next(), "openPanel");
    EXPECT_EQ(activate(QString(4096, 'a')).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.next(), std::string(4096, 'a'));
}

TEST_F(DBusInstanceTest, StatusIsWhatTheInstanceSaysOfItself)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    EXPECT_EQ(outcome("status"), "fine, thanks: é");
}

TEST_F(DBusInstanceTest, ARequestReportsThatNoInstanceRuns)
{
    EXPECT_EQ(outcome("toggle"), "notRunning");
    EXPECT_EQ(outcome("status"), "notRunning");
}

TEST_F(DBusInstanceTest, ReplacingHasTheInstanceQuitAndTakesItsPlace)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    Probe replacement("replace");

    EXPECT_EQ(first.next(), "quit");
    EXPECT_EQ(first.next(), "") << "it has ended";
    EXPECT_EQ(replacement.next(), "first");
    EXPECT_EQ(outcome("claim"), "second");
    EXPECT_EQ(outcome("toggle"), "delivered");
    EXPECT_EQ(replacement.next(), "toggle");
}

TEST_F(DBusInstanceTest, ReplacingNoInstanceIsAnOrdinaryStart)
{
    EXPECT_EQ(outcome("replace"), "first");
}

TEST_F(DBusInstanceTest, AnInstanceThatHangsIsNotWaitedForForever)
{
    Probe hung("claim");
    EXPECT_EQ(hung.next(), "first");
    hung.stop();

    EXPECT_EQ(outcome("claim"), "second");
    EXPECT_EQ(outcome("openPanel"), "noAnswer");
    EXPECT_EQ(outcome("status"), "noAnswer");
    EXPECT_EQ(outcome("replace"), "second");

    hung.goOn();
    EXPECT_EQ(hung.next(), "openPanel") << "nothing was lost";
    EXPECT_EQ(hung.next(), "quit");
}

TEST_F(DBusInstanceTest, WithoutABusThereIsNoTelling)
{
    const QString nowhere = "unix:path=/nowhere/bus";

    EXPECT_EQ(Probe("claim", nowhere).next(), "unknown");
    EXPECT_EQ(Probe("replace", nowhere).next(), "unknown");
    EXPECT_EQ(Probe("toggle", nowhere).next(), "notRunning");
    EXPECT_EQ(Probe("status", nowhere).next(), "notRunning");
}

TEST_F(DBusInstanceTest, WithoutABusALockedFileDecides)
{
    const QString nowhere = "unix:path=/nowhere/bus";
    {
        Probe first("claim-alone", nowhere);
        EXPECT_EQ(first.next(), "unknown");

        EXPECT_EQ(Probe("claim", nowhere).next(), "second");
        EXPECT_EQ(Probe("toggle", nowhere).next(), "unreachable");
        EXPECT_EQ(Probe("status", nowhere).next(), "unreachable");
    }
    EXPECT_EQ(Probe("claim", nowhere).next(), "unknown") << "the lock of a killed process is free";
}

/// A bus of the test's own, which may die.
class LostBus : public testing::Test
{
protected:
    LostBus() { start(); }
    ~LostBus() override { kill(); }

    void start()
    {
        m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_daemon.start("dbus-daemon",
                       {"--session", "--nofork", "--print-address", "--address=" + address});
        EXPECT_TRUE(EventLoop::until([this] { return m_daemon.canReadLine(); }));
        (void)m_daemon.readAllStandardOutput();
    }
    void kill()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
        std::filesystem::remove(socket);
    }

    [[nodiscard]] std::string outcome(const QString& word) const
    {
        return Probe(word, address).next();
    }

    EventLoop loop;
    TemporaryFolder folder;
    const std::filesystem::path socket = folder.path() / "bus";
    const QString address = QString::fromStdString("unix:path=" + socket.string());

private:
    QProcess m_daemon;
};

TEST_F(LostBus, TheInstanceIsReachedAgainOnceTheBusIsBack)
{
    Probe first("claim", address);
    ASSERT_EQ(first.next(), "first");
    kill();
    EXPECT_EQ(outcome("status"), "unreachable");
    start();

    EXPECT_TRUE(EventLoop::until([this] { return outcome("status") == "fine, thanks: é"; }));
    EXPECT_EQ(outcome("claim"), "second");
    EXPECT_EQ(outcome("toggle"), "delivered");
    EXPECT_EQ(first.next(), "toggle");
}

TEST_F(LostBus, AnInstanceWhoseNameWasTakenMeanwhileQuits)
{
    Probe first("claim", address);
    ASSERT_EQ(first.next(), "first");
    first.stop();
    kill();
    start();
    Probe second("claim", address);
    ASSERT_EQ(second.next(), "first");

    first.goOn();

    EXPECT_EQ(first.next(), "quit");
    EXPECT_EQ(first.next(), "") << "it has ended";
    EXPECT_EQ(outcome("toggle"), "delivered");
    EXPECT_EQ(second.next(), "toggle");
}

TEST_F(LostBus, TheBusMayDieMoreThanOnce)
{
    Probe first("claim", address);
    ASSERT_EQ(first.next(), "first");
    for (int death = 0; death < 2; ++death) {
        kill();
        start();
        EXPECT_TRUE(EventLoop::until([this] { return outcome("status") == "fine, thanks: é"; }));
    }
}

TEST_F(DBusInstanceTest, DesktopActivatesItAsAnyApplication)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");
    const QString interface = "org.freedesktop.Application";

    EXPECT_EQ(call(interface, "Activate", {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.next(), "openPanel");
    EXPECT_EQ(call(interface, "Open", {QStringList{"file:///a"}, QVariantMap()}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.next(), "openPanel");
    EXPECT_EQ(call(interface, "ActivateAction", {"toggle", QVariantList(), QVariantMap()}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.next(), "toggle");
}

TEST_F(DBusInstanceTest, UnknownMethodIsAnErrorAndChangesNothing)
{
    Probe first("claim");
    EXPECT_EQ(first.next(), "first");

    EXPECT_EQ(call("app.clavo.Clavo", "Explode", {}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call("app.clavo.Clavo", "Toggle", {7}).type(), QDBusMessage::ErrorMessage);

    EXPECT_EQ(outcome("openPanel"), "delivered");
    EXPECT_EQ(first.next(), "openPanel");
}

} // namespace
} // namespace clavo
