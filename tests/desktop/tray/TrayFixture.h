// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/x11/EventLoop.h"
#include "desktop/x11/Hands.h"

#include <QProcess>
#include <QRect>
#include <QStringList>
#include <gtest/gtest.h>

#include <optional>

namespace clavo
{

/// A process that ends with the test.
class Child
{
public:
    Child(const QString& program, const QStringList& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void write(const QByteArray& line);
    /// The lines of its standard output so far.
    [[nodiscard]] QStringList lines();

private:
    QProcess m_process;
    QByteArray m_output;
};

/// A desktop whose tray hosts come and go, and a program that puts an item there. A program of each
/// test's own: Qt decides some things about trays once in a process.
class TrayFixture : public testing::Test
{
protected:
    TrayFixture();

    void startProgram();
    void startXEmbedHost();
    void startStatusNotifierHost();
    void stopXEmbedHost() { m_xembedHost.reset(); }
    void stopStatusNotifierHost();

    /// Waits for the item to be in the tray.
    [[nodiscard]] bool isDocked();
    [[nodiscard]] bool isRegistered();

    /// Where the XEmbed host has put the item.
    [[nodiscard]] std::optional<QRect> dockedPlace();
    /// The items that the StatusNotifier hosts show, as "service/path".
    [[nodiscard]] static QStringList registeredItems();

    void click(QPoint point, int button = 1);

    /// Waits for the program to say it, as the last thing it said.
    [[nodiscard]] bool untilSaid(const QString& line);
    [[nodiscard]] QStringList said() { return m_program->lines(); }
    void tell(const QByteArray& command) { m_program->write(command); }

    EventLoop loop;
    Hands hands;

private:
    std::optional<Child> m_xembedHost;
    std::optional<Child> m_statusNotifierHost;
    std::optional<Child> m_program;
};

} // namespace clavo
