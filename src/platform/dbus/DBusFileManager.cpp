// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusFileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <filesystem>
#include <utility>

namespace clavo
{
namespace
{

class DBusFileManager final : public FileManager
{
public:
    explicit DBusFileManager(std::unique_ptr<FileManager> fallback)
        : m_fallback(std::move(fallback))
    {
    }

    void show(const std::filesystem::path& folder) override
    {
        const auto url = QUrl::fromLocalFile(QString::fromStdString(folder.string()));
        auto call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1",
                                                   "/org/freedesktop/FileManager1",
                                                   "org.freedesktop.FileManager1", "ShowFolders");
        call << QStringList{url.toString(QUrl::FullyEncoded)}
             << QString(); // No start-up notification.
        auto* const answer =
            new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
        QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer,
                         [answer, folder, fallback = m_fallback] {
                             if (answer->isError())
                                 fallback->show(folder);
                             answer->deleteLater();
                         });
    }

private:
    std::shared_ptr<FileManager> m_fallback; // Shared with the calls that await their answer.
};

} // namespace

std::unique_ptr<FileManager> makeDBusFileManager(std::unique_ptr<FileManager> fallback)
{
    return std::make_unique<DBusFileManager>(std::move(fallback));
}

} // namespace clavo
