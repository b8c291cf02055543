// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "log/Log.h"
#include "platform/dbus/DBusFileManager.h"
#include "platform/dbus/DBusInstance.h"
#include "platform/dbus/DBusTrayHosts.h"
#include "platform/dbus/PortalAppearanceSettings.h"
#include "platform/dbus/PortalHotKeyService.h"
#include "platform/evdev/EvdevEventTap.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/Environment.h"
#include "platform/linux/EvdevInputAccess.h"
#include "platform/linux/FileDefaultsStore.h"
#include "platform/linux/InputSource.h"
#include "platform/linux/PreferredTrayHosts.h"
#include "platform/linux/ProcessRelauncher.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/RunningProgram.h"
#include "platform/linux/SecureInputs.h"
#include "platform/linux/TapHotKeyService.h"
#include "platform/none/NoTrayHosts.h"
#include "platform/x11/X11EventTap.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11TrayHosts.h"

#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>

#include <unistd.h>

#include <string_view>
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
    bool request() override { return isGranted(); }
    void showSettings() override {}
};

} // namespace

Platform makePlatform()
{
    Platform platform;
    if (::geteuid() == 0)
        log::error("Clavo tourne en tant que root : ce n'est jamais nécessaire");
    const auto session = sessionEnvironment();
    if (!session.input.empty() && session.input != "x11" && session.input != "evdev")
        log::notice("CLAVO_INPUT « {} » ignoré : il faut x11 ou evdev", session.input);
    const auto source = inputSource(session);
    if (source == InputSource::x11 || isX11Session(session))
        platform.screens = std::make_unique<X11Screens>();
    else
        platform.screens = std::make_unique<QtScreens>();
    if (source == InputSource::x11)
        platform.eventTap = std::make_unique<X11EventTap>();
    else
        platform.eventTap = std::make_unique<EvdevEventTap>(*platform.screens);
    if (isX11Session(session)) {
        platform.hotKeys = std::make_unique<X11HotKeyService>();
    } else {
        auto tapped = std::make_unique<TapHotKeyService>();
        platform.eventTap = tapped->watched(std::move(platform.eventTap));
        platform.hotKeys = std::make_unique<PortalHotKeyService>(std::move(tapped));
    }
    platform.secureInput = makeSecureInput(session);
    platform.audioOutput = makeAudioOutput();
    platform.inputAccess = makeInputAccess();
    platform.defaults = std::make_unique<FileDefaultsStore>(settingsFile());
    platform.executable = runningProgram();
    const auto configuration = userFolder("XDG_CONFIG_HOME", ".config");
    platform.loginItem =
        std::make_unique<AutostartEntry>(autostartFolders(configuration), platform.executable);
    platform.relauncher = std::make_unique<ProcessRelauncher>(platform.executable);
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = applicationSupportFolder();
    return platform;
}

std::unique_ptr<InputAccess> makeInputAccess()
{
    if (inputSource(sessionEnvironment()) == InputSource::x11)
        return std::make_unique<X11InputAccess>();
    const auto grant = runningProgram().parent_path() / "clavo-grant-input";
    std::error_code error;
    return std::make_unique<EvdevInputAccess>(EvdevInputAccess::Programs{
        .pkexec = QStandardPaths::findExecutable("pkexec").toStdString(),
        .grant = fs::exists(grant, error) ? grant : fs::path{},
    });
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    std::unique_ptr<TrayHosts> windows = std::make_unique<NoTrayHosts>();
    if (isX11Session(sessionEnvironment()))
        windows = std::make_unique<X11TrayHosts>();
    return std::make_unique<PreferredTrayHosts>(std::make_unique<DBusTrayHosts>(),
                                                std::move(windows));
}

std::unique_ptr<AppearanceSettings> makeAppearanceSettings()
{
    return std::make_unique<PortalAppearanceSettings>();
}

std::unique_ptr<Instance> makeInstance()
{
    return std::make_unique<DBusInstance>();
}

std::unique_ptr<FileManager> makeFileManager()
{
    return std::make_unique<DBusFileManager>([](const fs::path& folder) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(folder.string())));
    });
}

} // namespace clavo
