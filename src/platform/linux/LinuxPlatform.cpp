// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "app/FileDefaultsStore.h"
#include "input/TapHotKeyService.h"
#include "log/Log.h"
#include "platform/dbus/DBusFileManager.h"
#include "platform/dbus/DBusInstance.h"
#include "platform/dbus/DBusTrayHosts.h"
#include "platform/dbus/PortalAppearanceSettings.h"
#include "platform/dbus/PortalHotKeyService.h"
#include "platform/evdev/EvdevEventTap.h"
#include "platform/evdev/EvdevInputAccess.h"
#include "platform/linux/SecureInputs.h"
#include "platform/linux/Session.h"
#include "platform/none/NonePlatform.h"
#include "platform/posix/Environment.h"
#include "platform/procfs/RunningProgram.h"
#include "platform/qt/ProcessRelauncher.h"
#include "platform/qt/QtFileManager.h"
#include "platform/qt/QtScreens.h"
#include "platform/qt/QtWindows.h"
#include "platform/systemd/Journal.h"
#include "platform/x11/X11EventTap.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Session.h"
#include "platform/x11/X11TrayHosts.h"
#include "platform/xdg/AutostartEntry.h"
#include "platform/xdg/ProgramFolders.h"
#include "tray/PreferredTrayHosts.h"

#include <QStandardPaths>

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

/// The X server shows every client all input; there is no permission to ask for.
class X11InputAccess : public InputAccess
{
public:
    [[nodiscard]] State state() const override
    {
        return environment("DISPLAY").empty() ? State::refused : State::granted;
    }
    bool request(Occasion /*occasion*/) override { return isGranted(); }
    void showSettings() override {}
};

/// The first service, or the second if the program is built without the first one's technology.
template <typename Port>
std::unique_ptr<Port> either(std::unique_ptr<Port> first, std::unique_ptr<Port> second)
{
    return first ? std::move(first) : std::move(second);
}

} // namespace

Platform makePlatform()
{
    auto platform = makeNonePlatform();
    platform.missing = CLAVO_MISSING;
    if (!platform.missing.empty())
        log::notice("compilé sans {}", platform.missing);
    if (::geteuid() == 0)
        log::error("Clavo tourne en tant que root : ce n'est jamais nécessaire");
    const auto wanted = environment("CLAVO_INPUT");
    if (!wanted.empty() && wanted != "x11" && wanted != "evdev")
        log::notice("CLAVO_INPUT « {} » ignoré : il faut x11 ou evdev", wanted);
    const auto source = session().input;
    platform.screens = source == InputSource::x11 || session().isX11()
                           ? either(makeX11Screens(), makeQtScreens())
                           : makeQtScreens();
    platform.eventTap = either(source == InputSource::x11 ? makeX11EventTap()
                                                          : makeEvdevEventTap(*platform.screens),
                               std::move(platform.eventTap));
    if (session().isX11()) {
        platform.hotKeys = makeX11HotKeyService();
    } else {
        auto tapped = std::make_unique<TapHotKeyService>();
        platform.eventTap = tapped->watched(std::move(platform.eventTap));
        platform.hotKeys = makePortalHotKeyService(std::move(tapped));
    }
    platform.secureInput = makeSecureInput(session());
    platform.audioOutput = makeAudioOutput();
    platform.inputAccess = makeInputAccess();
    platform.defaults = std::make_unique<FileDefaultsStore>(settingsFile());
    platform.executable = runningProgram();
    const auto configuration = userFolder("XDG_CONFIG_HOME", ".config");
    platform.loginItem = makeAutostartEntry(autostartFolders(configuration), platform.executable);
    platform.relauncher = makeProcessRelauncher(platform.executable);
    platform.trayHosts = makeTrayHosts();
    platform.appearance = either(makePortalAppearanceSettings(), std::move(platform.appearance));
    platform.fileManager = makeDBusFileManager(makeQtFileManager());
    platform.canPlaceWindows = canPlaceQtWindows();
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = applicationSupportFolder();
    return platform;
}

Platform makeDemonstrationPlatform()
{
    auto platform = makeNonePlatform();
    platform.defaults =
        std::make_unique<FileDefaultsStore>(settingsFile(), FileDefaultsStore::Changes::forgotten);
    platform.appearance = either(makePortalAppearanceSettings(), std::move(platform.appearance));
    platform.executable = runningProgram();
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = applicationSupportFolder();
    return platform;
}

std::unique_ptr<InputAccess> makeInputAccess()
{
    if (session().input == InputSource::x11)
        return std::make_unique<X11InputAccess>();
    const auto grant = runningProgram().parent_path() / "clavo-grant-input";
    std::error_code error;
    return either(makeEvdevInputAccess({
                      .pkexec = QStandardPaths::findExecutable("pkexec").toStdString(),
                      .grant = fs::exists(grant, error) ? grant : fs::path{},
                  }),
                  makeNonePlatform().inputAccess);
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    auto notifier = either(makeDBusTrayHosts(), makeNoTrayHosts());
    auto windows = session().isX11() ? makeX11TrayHosts() : makeNoTrayHosts();
    return std::make_unique<PreferredTrayHosts>(std::move(notifier), std::move(windows));
}

PackFolders packFolders()
{
    return PackLibrary::folders(resourcesFolder(runningProgram()), applicationSupportFolder());
}

// Qt would end the process if it could not reach the display.
void prepareForWindows()
{
    if (session().windows != WindowSystem::wayland && !isXServerThere())
        setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite=*/0);
}

std::unique_ptr<Instance> makeInstance()
{
    return either(makeDBusInstance(), makeNoInstance());
}

void sendLogToSystem()
{
    if (environment("CLAVO_LOG_LEVEL") == "debug")
        log::setThreshold(log::Level::debug);
    if (auto* const sink = journalSink(); sink && environment("CLAVO_LOG") != "stderr")
        log::setSink(sink);
}

void returnFreedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace clavo
