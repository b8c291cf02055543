// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QObject>

#include <functional>
#include <utility>

namespace clavo
{

/// Puts a question on the bus and returns at once; the answer goes to the receiver from the main
/// loop. Where it is an error or of another type, and once the context is gone, the receiver is not
/// called.
template <typename Answer>
void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* context,
         std::function<void(const Answer&)> receiver)
{
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(question), context);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, context,
                     [answer, receiver = std::move(receiver)] {
                         answer->deleteLater();
                         if (const QDBusPendingReply<Answer> reply = *answer; reply.isValid())
                             receiver(reply.value());
                     });
}

} // namespace clavo
