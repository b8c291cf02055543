// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusMessages.h"

#include "desktop/x11/EventLoop.h"
#include "log/Log.h"

#include <QDBusConnection>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// What a signal might hold, not registered for the bus.
struct Unregistered {
};

class Listener : public QObject
{
    Q_OBJECT

public slots:
    void hear() {}
    void hearOf(const Unregistered& /*value*/) {}
};

class DBusSignalTest : public testing::Test
{
protected:
    DBusSignalTest()
    {
        lines().clear();
        log::setSink([](log::Level, std::string_view line) { lines().emplace_back(line); });
    }
    ~DBusSignalTest() override { log::setSink(&log::writeToStandardError); }
    DBusSignalTest(const DBusSignalTest&) = delete;
    DBusSignalTest& operator=(const DBusSignalTest&) = delete;

    static std::vector<std::string>& lines()
    {
        static std::vector<std::string> all;
        return all;
    }

    EventLoop loop;
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "signals");
    Listener listener;
    const DBusSignal signal{{{}, "/", "app.clavo.Test"}, "Changed"};
};

TEST_F(DBusSignalTest, ARefusedSlotIsLogged)
{
    listen(bus, signal, &listener, SLOT(hearOf(Unregistered)));

    EXPECT_THAT(lines(), ElementsAre("signal D-Bus refusé : app.clavo.Test.Changed"));
}

TEST_F(DBusSignalTest, ASlotThatIsTakenIsNotLogged)
{
    listen(bus, signal, &listener, SLOT(hear()));

    EXPECT_THAT(lines(), IsEmpty());
}

} // namespace
} // namespace clavo

#include <DBusSignalTest.moc> // Generated, in no source folder.
