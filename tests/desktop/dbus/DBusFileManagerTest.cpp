// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusFileManager.h"

#include "eventloop/EventLoop.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using Paths = std::vector<std::filesystem::path>;

const QString serviceName = QStringLiteral("org.freedesktop.FileManager1");

/// The desktop's file manager, on a connection of its own to the session's bus.
class FileManagerService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FileManagerService()
    {
        m_bus.registerObject("/org/freedesktop/FileManager1", this,
                             QDBusConnection::ExportAllSlots);
        EXPECT_TRUE(m_bus.registerService(serviceName));
    }
    ~FileManagerService() override
    {
        m_bus.unregisterService(serviceName);
        QDBusConnection::disconnectFromBus(m_bus.name());
    }
    FileManagerService(const FileManagerService&) = delete;
    FileManagerService& operator=(const FileManagerService&) = delete;

    bool refuses = false;
    QStringList shown;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the bus gives the method its name.
    void ShowFolders(const QStringList& folders, const QString& /*startupId*/)
    {
        shown += folders;
        if (refuses)
            sendErrorReply(QDBusError::Failed, "no such folder");
    }

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "manager");
};

/// Remembers what it was to show, also when it is gone.
class Fallback final : public FileManager
{
public:
    explicit Fallback(Paths& opened) : m_opened(opened) {}

    void show(const std::filesystem::path& folder) override { m_opened.push_back(folder); }

private:
    Paths& m_opened;
};

class DBusFileManagerTest : public testing::Test
{
protected:
    [[nodiscard]] std::unique_ptr<FileManager> make()
    {
        return makeDBusFileManager(std::make_unique<Fallback>(opened));
    }

    EventLoop loop;
    Paths opened; // Without the bus.
    std::unique_ptr<FileManager> fileManager = make();
};

TEST_F(DBusFileManagerTest, TheDesktopsFileManagerShowsTheFolder)
{
    FileManagerService service;

    fileManager->show("/tmp/my packs/é");
    EXPECT_TRUE(EventLoop::until([&] { return !service.shown.isEmpty(); }));

    EXPECT_EQ(service.shown, QStringList("file:///tmp/my%20packs/%C3%A9"));
    // Answers come in the order of the calls.
    service.refuses = true;
    fileManager->show("/tmp/next");
    EXPECT_TRUE(EventLoop::until([&] { return !opened.empty(); }));
    EXPECT_THAT(opened, ElementsAre("/tmp/next"));
}

TEST_F(DBusFileManagerTest, WithoutOneTheFallbackShowsTheFolder)
{
    fileManager->show("/tmp/packs");

    EXPECT_TRUE(EventLoop::until([&] { return !opened.empty(); }));
    EXPECT_THAT(opened, ElementsAre("/tmp/packs"));
}

TEST_F(DBusFileManagerTest, WhatItRefusesTheFallbackShows)
{
    FileManagerService service;
    service.refuses = true;

    fileManager->show("/tmp/packs");

    EXPECT_TRUE(EventLoop::until([&] { return !opened.empty(); }));
    EXPECT_THAT(opened, ElementsAre("/tmp/packs"));
}

TEST_F(DBusFileManagerTest, AnAnswerMayComeWhenItIsGone)
{
    make()->show("/tmp/packs");

    EXPECT_TRUE(EventLoop::until([&] { return !opened.empty(); }));
}

} // namespace
} // namespace clavo

#include "DBusFileManagerTest.moc"
