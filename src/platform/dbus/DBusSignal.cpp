// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusSignal.h"

#include "log/Log.h"

#include <QObject>
#include <QStringList>

namespace clavo
{

void listen(QDBusConnection bus, const DBusSignal& signal, QObject* receiver, const char* slot)
{
    const auto arguments =
        signal.firstArgument.isNull() ? QStringList() : QStringList{signal.firstArgument};
    if (!bus.connect(signal.service, signal.path, signal.interface, signal.name, arguments, {},
                     receiver, slot))
        log::error("signal D-Bus refusé : {}.{}", signal.interface.toStdString(),
                   signal.name.toStdString());
}

} // namespace clavo
