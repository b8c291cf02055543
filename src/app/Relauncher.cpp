// SPDX-License-Identifier: MIT
#include "app/Relauncher.h"

#include <QCoreApplication>

namespace clavo
{

// exit(), as quit() asks every window first, and one that refuses to close would leave two
// instances.
void relaunch(Relauncher& relauncher)
{
    const auto exit = [] { QCoreApplication::exit(); };
    relauncher.openNewInstance(
        [exit] { QMetaObject::invokeMethod(qApp, exit, Qt::QueuedConnection); });
}

} // namespace clavo
