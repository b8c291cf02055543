// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "app/FileDefaultsStore.h"
#include "log/Log.h"
#include "platform/none/NonePlatform.h"
#include "platform/none/SilentOutput.h"
#include "platform/qt/ProcessRelauncher.h"
#include "platform/qt/QtFileManager.h"
#include "platform/qt/QtScreens.h"
#include "platform/qt/QtWindows.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QString>

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

fs::path pathOf(const QString& path)
{
    return path.toStdU16String();
}

fs::path executable()
{
    return pathOf(QCoreApplication::applicationFilePath());
}

fs::path resources()
{
    std::error_code error;
    const auto folder = executable().parent_path().parent_path() / "share" / "clavo";
    return fs::is_directory(folder, error) ? folder : fs::path{};
}

fs::path applicationSupport()
{
    return pathOf(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

Platform makePlatform(DefaultsChanges changes)
{
    auto platform = makeNonePlatform();
    const auto settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    platform.defaults =
        makeFileDefaultsStore(pathOf(settings) / "Clavo" / "settings.json", changes);
    platform.executable = executable();
    platform.resources = resources();
    platform.applicationSupport = applicationSupport();
    return platform;
}

} // namespace

Platform makePlatform()
{
    auto platform = makePlatform(DefaultsChanges::written);
    platform.screens = makeQtScreens();
    platform.relauncher = makeProcessRelauncher(platform.executable);
    platform.fileManager = makeQtFileManager();
    platform.canPlaceWindows = canPlaceQtWindows();
    platform.missing = "everything that listens and plays";
    log::notice("compilé sans rien qui écoute ni qui joue");
    return platform;
}

Platform makeDemonstrationPlatform()
{
    return makePlatform(DefaultsChanges::forgotten);
}

std::unique_ptr<InputAccess> makeInputAccess()
{
    return makeNonePlatform().inputAccess;
}

std::unique_ptr<AudioOutput> makeAudioOutput()
{
    return makeSilentOutput();
}

PackFolders packFolders()
{
    return PackLibrary::folders(resources(), applicationSupport());
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    return makeNoTrayHosts();
}

std::unique_ptr<Instance> makeInstance()
{
    return makeNoInstance();
}

// Left to the system's settings.
void preventCoreDumps() {}

// Qt finds the desktop by itself.
void prepareForWindows() {}

// Log lines stay on the standard error: the system's log is not known.
void sendLogToSystem() {}

// Nothing is lost at an unexpected end: all files are written already.
void quitOnTermination() {}

void returnFreedMemory() {}

} // namespace clavo
