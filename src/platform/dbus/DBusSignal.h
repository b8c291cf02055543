// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

class QObject;

namespace clavo
{

/// A signal of the bus.
struct DBusSignal {
    QString service;
    QString path;
    QString interface;
    QString name;
    QString firstArgument = {}; // Only signals whose first argument is this text; all if null.
};

/// Connects a slot to the signal, once. Qt refuses a slot that it cannot find and one with a
/// parameter whose type is not registered by its name; that is logged.
void listen(QDBusConnection bus, const DBusSignal& signal, QObject* receiver, const char* slot);

} // namespace clavo
