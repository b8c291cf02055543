// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusFileManager.h"

#include "platform/dbus/DBusMessages.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
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
        send(QDBusConnection::sessionBus(), call, QCoreApplication::instance(),
             [folder, fallback = m_fallback](const QDBusMessage& reply) {
                 if (reply.type() == QDBusMessage::ErrorMessage)
                     fallback->show(folder);
             });
    }

private:
    std::shared_ptr<FileManager> m_fallback; // Shared with the calls that await a reply.
};

} // namespace

std::unique_ptr<FileManager> makeDBusFileManager(std::unique_ptr<FileManager> fallback)
{
    return std::make_unique<DBusFileManager>(std::move(fallback));
}

} // namespace clavo
