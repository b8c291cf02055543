// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickWindow>
#include <QVariantMap>

#include <memory>

class QQmlEngine;

namespace clavo
{

/// Makes the QML modules Clavo and Clavo.Controls known to every engine of this process.
void registerQmlModules();

/// A window of the interface, hidden as yet, by its file's name and with its required properties.
/// That it cannot be made is fatal. The engine outlives it.
[[nodiscard]] std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const char* file,
                                                       const QVariantMap& properties);

/// Gives every item of the window its place now. The scene does so with its first frame, too late
/// for the window to appear with the height that wrapped texts need.
void layOut(QQuickWindow& window);

} // namespace clavo
