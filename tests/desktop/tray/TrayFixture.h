// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/Hands.h"
#include "desktop/user/HostPrograms.h"
#include "eventloop/EventLoop.h"

#include <QRect>
#include <QStringList>
#include <gtest/gtest.h>

#include <optional>

namespace clavo
{

/// A desktop whose tray hosts come and go, and a program that puts an item there. A program of each
/// test's own: Qt decides some things about trays once in a process.
class TrayFixture : public testing::Test
{
protected:
    TrayFixture();

    void startProgram();
    void startXEmbedHost() { m_hosts.startXEmbedHost(); }
    void startStatusNotifierHost() { m_hosts.startStatusNotifierHost(); }
    void stopXEmbedHost() { m_hosts.stopXEmbedHost(); }
    void stopStatusNotifierHost() { m_hosts.stopStatusNotifierHost(); }

    /// Waits for the item to be in the tray.
    [[nodiscard]] bool isDocked();
    [[nodiscard]] bool isRegistered();

    /// Where the XEmbed host has put the item.
    [[nodiscard]] std::optional<QRect> dockedPlace();
    /// The items that the StatusNotifier hosts show, as "service/path".
    [[nodiscard]] static QStringList registeredItems() { return HostPrograms::registeredItems(); }

    void click(QPoint point, int button = 1);

    /// Waits for the program to say it, as the last thing it said.
    [[nodiscard]] bool untilSaid(const QString& line);
    [[nodiscard]] QStringList said() { return m_program->lines(); }
    void tell(const QByteArray& command) { m_program->write(command); }

    EventLoop loop;
    Hands hands;

private:
    HostPrograms m_hosts;
    std::optional<Child> m_program;
};

} // namespace clavo
