// SPDX-License-Identifier: MIT
#include "app/Relauncher.h"

#include <QCoreApplication>

namespace clavo
{

// exit(), as quit() asks every window first, and one that refuses to close would leave two
// instances.
void relaunch(Relauncher& relauncher)
{
    relauncher.openNewInstance([] {
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    });
}

} // namespace clavo
