// SPDX-License-Identifier: MIT
#include "platform/qt/QtWindows.h"

#include <QGuiApplication>

namespace clavo
{

bool canPlaceQtWindows()
{
    return !QGuiApplication::platformName().startsWith("wayland");
}

} // namespace clavo
