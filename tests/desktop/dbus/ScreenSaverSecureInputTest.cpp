// SPDX-License-Identifier: MIT
#include "platform/dbus/ScreenSaverSecureInput.h"

#include "eventloop/EventLoop.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include <string>

namespace clavo
{
namespace
{

/// The screen saver of a desktop.
class ScreenSaver final : public QObject
{
    Q_OBJECT

public:
    ScreenSaver(QString name, const QString& path, bool isActive)
        : m_name(std::move(name)), m_path(path), m_isActive(isActive)
    {
        m_bus.registerObject(m_path, m_name, this, QDBusConnection::ExportAllSlots);
        EXPECT_TRUE(m_bus.registerService(m_name));
    }
    ~ScreenSaver() override { QDBusConnection::disconnectFromBus(m_name); }

    void activate(bool isActive)
    {
        auto signal = QDBusMessage::createSignal(m_path, m_name, "ActiveChanged");
        m_bus.send(signal << isActive);
    }

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the bus gives the method its name.
    bool GetActive() { return m_isActive; }

private:
    QString m_name;
    QString m_path;
    bool m_isActive;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
};

class ScreenSaverSecureInputTest : public testing::Test
{
protected:
    static bool becomes(const SecureInput& secureInput, SecureReason reason)
    {
        return EventLoop::until([&] { return secureInput.reason() == reason; });
    }

    EventLoop loop;
};

TEST_F(ScreenSaverSecureInputTest, ReportsAScreenSaverThatIsActiveAtTheStart)
{
    const ScreenSaver screenSaver("org.gnome.ScreenSaver", "/org/gnome/ScreenSaver", true);

    const auto secureInput = makeScreenSaverSecureInput();

    EXPECT_TRUE(becomes(*secureInput, SecureReason::lockedSession));
}

TEST_F(ScreenSaverSecureInputTest, FollowsTheScreenSaverOfEveryDesktop)
{
    const auto secureInput = makeScreenSaverSecureInput();

    for (const std::string desktop : {"freedesktop", "gnome", "cinnamon", "mate", "xfce"}) {
        const auto name = "org." + desktop + ".ScreenSaver";
        const auto path = "/org/" + desktop + "/ScreenSaver";
        ScreenSaver screenSaver(QString::fromStdString(name), QString::fromStdString(path), false);

        screenSaver.activate(true);
        EXPECT_TRUE(becomes(*secureInput, SecureReason::lockedSession)) << desktop;
        screenSaver.activate(false);
        EXPECT_TRUE(becomes(*secureInput, SecureReason::none)) << desktop;
    }
}

TEST_F(ScreenSaverSecureInputTest, OneThatHasAnotherPathIsFollowedToo)
{
    const auto secureInput = makeScreenSaverSecureInput();
    ScreenSaver screenSaver("org.freedesktop.ScreenSaver", "/ScreenSaver", false);

    screenSaver.activate(true);

    EXPECT_TRUE(becomes(*secureInput, SecureReason::lockedSession));
}

TEST_F(ScreenSaverSecureInputTest, OneThatEndsWhileItIsActiveIsNotActiveAnyMore)
{
    const auto secureInput = makeScreenSaverSecureInput();
    {
        ScreenSaver screenSaver("org.mate.ScreenSaver", "/org/mate/ScreenSaver", false);
        screenSaver.activate(true);
        ASSERT_TRUE(becomes(*secureInput, SecureReason::lockedSession));
    }

    EXPECT_TRUE(becomes(*secureInput, SecureReason::none));
}

} // namespace
} // namespace clavo

#include <ScreenSaverSecureInputTest.moc> // Generated, in no source folder.
