// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusMessages.h"

#include "eventloop/EventLoop.h"
#include "fakes/CollectedLog.h"

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
    CollectedLog logged;
    EventLoop loop;
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "signals");
    Listener listener;
    const DBusSignal signal{{{}, "/", "app.clavo.Test"}, "Changed"};
};

TEST_F(DBusSignalTest, ARefusedSlotIsLogged)
{
    listen(bus, signal, &listener, SLOT(hearOf(Unregistered)));

    EXPECT_THAT(logged.lines(), ElementsAre("signal D-Bus refusé : app.clavo.Test.Changed"));
}

TEST_F(DBusSignalTest, ASlotThatIsTakenIsNotLogged)
{
    listen(bus, signal, &listener, SLOT(hear()));

    EXPECT_THAT(logged.lines(), IsEmpty());
}

} // namespace
} // namespace clavo

#include <DBusSignalTest.moc> // Generated, in no source folder.
