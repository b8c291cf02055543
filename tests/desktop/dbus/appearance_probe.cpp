// SPDX-License-Identifier: MIT
// appearance_probe
//
// A process that watches the desktop's appearance settings and prints the preference for dark or
// light whenever one is reported. It registers no type of the bus by itself.
#include "platform/dbus/PortalAppearanceSettings.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const auto settings = clavo::makePortalAppearanceSettings();
    settings->watch([](const clavo::AppearancePreference& wish) {
        std::puts(!wish.isDark ? "none" : *wish.isDark ? "dark" : "light");
        std::fflush(stdout);
    });
    return QCoreApplication::exec();
}
