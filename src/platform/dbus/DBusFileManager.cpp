// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusFileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QUrl>

#include <utility>

namespace clavo
{

DBusFileManager::DBusFileManager(Open otherwise) : m_otherwise(std::move(otherwise)) {}

void DBusFileManager::show(const std::filesystem::path& folder)
{
    const auto url = QUrl::fromLocalFile(QString::fromStdString(folder.string()));
    auto call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1",
                                               "/org/freedesktop/FileManager1",
                                               "org.freedesktop.FileManager1", "ShowFolders");
    call << QStringList{url.toString(QUrl::FullyEncoded)} << QString(); // No start-up notification.
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer,
                     [answer, folder, otherwise = m_otherwise] {
                         if (answer->isError())
                             otherwise(folder);
                         answer->deleteLater();
                     });
}

} // namespace clavo
