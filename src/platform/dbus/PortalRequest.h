// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/DBusMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantMap>
#include <QtGlobal>

#include <functional>

class QObject;

namespace clavo
{

/// The desktop portal's name on the bus.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");

/// A call of a method of the desktop portal. It starts the portal if it does not run.
[[nodiscard]] QDBusMessage portalCall(const QString& interface, const QString& method);

/// A signal of the desktop portal.
[[nodiscard]] DBusSignal portalSignal(const QString& interface, const QString& name);

/// The result of a request to the desktop portal, by the portal's numbers.
enum class PortalOutcome : uint { success = 0, cancelled = 1, failed = 2 };

/// Sends a call that the desktop portal answers later, with the signal of a request; the options
/// are added as its last argument. The receiver is called once, from the main loop, unless the
/// context is gone by then. A call that the portal refuses has failed.
void request(const QDBusConnection& bus, const QDBusMessage& call, const QVariantMap& options,
             QObject* context,
             std::function<void(PortalOutcome outcome, const QVariantMap& results)> receiver);

} // namespace clavo
