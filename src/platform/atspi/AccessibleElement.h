// SPDX-License-Identifier: MIT
//
// Questions on the accessibility bus about the elements of programs' windows. Each returns at once,
// as ask() does.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

#include <sys/types.h>

namespace clavo::atspi
{

/// An element of a program's window by its place on the bus.
struct Element {
    QString program; // The program's connection.
    QString path;

    bool operator==(const Element&) const = default;
};

/// Whether the element, or the one it is part of, is a password field. In some toolkits a plain
/// text inside the field has focus.
void askPasswordField(const QDBusConnection& bus, const Element& element, QObject* context,
                      const std::function<void(bool)>& receiver);

/// Whether the element has focus.
void askFocused(const QDBusConnection& bus, const Element& element, QObject* context,
                std::function<void(bool)> receiver);

/// The process of the program.
void askProcess(const QDBusConnection& bus, const QString& program, QObject* context,
                std::function<void(pid_t)> receiver);

} // namespace clavo::atspi
