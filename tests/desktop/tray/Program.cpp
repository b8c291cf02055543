// SPDX-License-Identifier: MIT
#include "fakes/FakeAppearanceSettings.h"
#include "platform/Platform.h"
#include "ui/controls/Appearance.h"
#include "ui/menubar/MenuBarItem.h"

#include <QApplication>
#include <QPalette>
#include <QSocketNotifier>
#include <QTextStream>

#include <memory>
#include <utility>

#include <unistd.h>

namespace
{

void say(const QString& line)
{
    QTextStream(stdout) << line << '\n' << Qt::flush;
}

QString text(const QRect& place)
{
    return QString("%1,%2 %3x%4")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

void obey(clavo::MenuBarItem& item, clavo::FakeAppearanceSettings& desktop, const QString& command)
{
    if (command == "on" || command == "off") {
        item.setEnabled(command == "on");
    } else if (command == "light" || command == "dark") {
        QPalette palette;
        palette.setColor(QPalette::WindowText, command == "light" ? Qt::black : Qt::white);
        QApplication::setPalette(palette);
    } else if (command == "wishes light" || command == "wishes dark") {
        desktop.turnTo({.isDark = command == "wishes dark", .accent = {}});
    }
}

} // namespace

/// The item in a program of its own. Prints the requests to the standard output and reads "on" and
/// "off", "light" and "dark" for the palette, "wishes light" and "wishes dark" for the desktop's
/// preference from the standard input, with which it ends.
int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    clavo::FakeAppearanceSettings desktop;
    clavo::Appearance::shared().follow(desktop);
    const auto hosts = clavo::makeTrayHosts();
    clavo::MenuBarItem item(*hosts);
    using clavo::MenuBarItem;
    QObject::connect(&item, &MenuBarItem::enabledRequested, [&item](bool enabled) {
        item.setEnabled(enabled);
        say(enabled ? "enabled" : "disabled");
    });
    QObject::connect(&item, &MenuBarItem::openRequested,
                     [](const QRect& place) { say("open " + text(place)); });
    QObject::connect(&item, &MenuBarItem::settingsRequested, [] { say("settings"); });
    QObject::connect(&item, &MenuBarItem::quitRequested, [] { say("quit"); });

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char bytes[256];
        const auto count = read(STDIN_FILENO, bytes, sizeof(bytes));
        if (count <= 0)
            return QApplication::quit();
        const auto commands = QString::fromLatin1(bytes, count).split('\n', Qt::SkipEmptyParts);
        for (const auto& command : commands)
            obey(item, desktop, command);
    });
    return QApplication::exec();
}
