// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "log/Log.h"
#include "platform/dbus/DBusFileManager.h"
#include "platform/dbus/DBusInstance.h"
#include "platform/dbus/DBusTrayHosts.h"
#include "platform/dbus/PortalAppearanceSettings.h"
#include "platform/linux/AudioOutputs.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/Environment.h"
#include "platform/linux/FileDefaultsStore.h"
#include "platform/linux/PreferredTrayHosts.h"
#include "platform/linux/ProcessRelauncher.h"
#include "platform/linux/RunningProgram.h"
#include "platform/none/NoEventTap.h"
#include "platform/none/NoHotKeyService.h"
#include "platform/none/NoScreens.h"
#include "platform/none/NoSecureInput.h"
#include "platform/none/NoTrayHosts.h"
#include "platform/x11/X11EventTap.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11TrayHosts.h"

#include <QDesktopServices>
#include <QUrl>

#include <string_view>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

/// A base folder of the user: the variable's, if it is an absolute path as the desktop's rules ask,
/// else below home.
fs::path userFolder(const char* variable, const char* belowHome)
{
    const fs::path folder = environment(variable);
    return folder.is_absolute() ? folder : fs::path(environment("HOME")) / belowHome;
}

fs::path resourcesFolder(const fs::path& executable)
{
    std::error_code error;
    const auto folder = executable.parent_path().parent_path() / "share" / "clavo";
    return fs::is_directory(folder, error) ? folder : fs::path{};
}

/// Under Wayland an X server is there too, but it tells only of the windows that live on it.
bool isX11Session()
{
    if (environment("XDG_SESSION_TYPE") == "wayland" || !environment("WAYLAND_DISPLAY").empty())
        return false;
    return !environment("DISPLAY").empty();
}

/// The X server shows every client all input; there is no permission to ask for.
class LinuxInputAccess : public InputAccess
{
public:
    [[nodiscard]] bool isGranted() const override { return isX11Session(); }
    bool request() override { return isGranted(); }
    void showSettings() override {}
};

} // namespace

Platform makePlatform()
{
    Platform platform;
    if (isX11Session()) {
        platform.eventTap = std::make_unique<X11EventTap>();
        platform.screens = std::make_unique<X11Screens>();
        platform.hotKeys = std::make_unique<X11HotKeyService>();
    } else {
        log::error("aucune session X11 : les touches ne peuvent pas être entendues");
        platform.eventTap = std::make_unique<NoEventTap>();
        platform.screens = std::make_unique<NoScreens>();
        platform.hotKeys = std::make_unique<NoHotKeyService>();
    }
    platform.secureInput = std::make_unique<NoSecureInput>();
    platform.audioOutput = makeAudioOutput();
    platform.inputAccess = makeInputAccess();
    const auto configuration = userFolder("XDG_CONFIG_HOME", ".config");
    platform.defaults =
        std::make_unique<FileDefaultsStore>(configuration / "Clavo" / "settings.json");
    platform.executable = runningProgram();
    platform.loginItem =
        std::make_unique<AutostartEntry>(autostartFolders(configuration), platform.executable);
    platform.relauncher = std::make_unique<ProcessRelauncher>(platform.executable);
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = userFolder("XDG_DATA_HOME", ".local/share");
    return platform;
}

std::unique_ptr<InputAccess> makeInputAccess()
{
    return std::make_unique<LinuxInputAccess>();
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    std::unique_ptr<TrayHosts> windows = std::make_unique<NoTrayHosts>();
    if (isX11Session())
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
