// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#include <QtGlobal>

#include <functional>

class QObject;

namespace clavo
{

/// What a request of the desktop portal ends with, by the portal's numbers.
enum class PortalOutcome : uint { success = 0, cancelled = 1, failed = 2 };

/// Sends a call that the desktop portal answers later, with the signal of a request; the options
/// are added as its last argument. The receiver is called once, from the main loop; not once the
/// context is gone. A call that the portal refuses has failed.
void request(const QDBusConnection& bus, const QDBusMessage& call, const QVariantMap& options,
             QObject* context,
             std::function<void(PortalOutcome outcome, const QVariantMap& results)> receiver);

} // namespace clavo
