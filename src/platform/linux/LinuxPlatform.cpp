// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "app/FileDefaultsStore.h"
#include "input/SecureInput.h"
#include "input/TapHotKeyService.h"
#include "log/Log.h"
#include "loop/QtTimer.h"
#include "platform/atspi/AtspiSecureInput.h"
#include "platform/dbus/DBusFileManager.h"
#include "platform/dbus/DBusInstance.h"
#include "platform/dbus/DBusTrayHosts.h"
#include "platform/dbus/LogindSecureInput.h"
#include "platform/dbus/PortalAppearanceSettings.h"
#include "platform/dbus/PortalHotKeyService.h"
#include "platform/dbus/ScreenSaverSecureInput.h"
#include "platform/evdev/EvdevEventTap.h"
#include "platform/evdev/EvdevInputAccess.h"
#include "platform/linux/RootsFile.h"
#include "platform/linux/Session.h"
#include "platform/linux/Technologies.h"
#include "platform/none/NonePlatform.h"
#include "platform/posix/Environment.h"
#include "platform/procfs/LockerSecureInput.h"
#include "platform/procfs/Processes.h"
#include "platform/procfs/PromptSecureInput.h"
#include "platform/procfs/TerminalSecureInput.h"
#include "platform/qt/ProcessRelauncher.h"
#include "platform/qt/QtFileManager.h"
#include "platform/qt/QtScreens.h"
#include "platform/qt/QtWindows.h"
#include "platform/systemd/Journal.h"
#include "platform/x11/X11ActiveWindow.h"
#include "platform/x11/X11EventTap.h"
#include "platform/x11/X11HotKeyService.h"
#include "platform/x11/X11InputAccess.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Session.h"
#include "platform/x11/X11TrayHosts.h"
#include "platform/xdg/AutostartEntry.h"
#include "platform/xdg/ProgramFolders.h"
#include "tray/PreferredTrayHosts.h"

#include <QStandardPaths>

#include <malloc.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace clavo
{
namespace
{

constexpr auto windowPlatform = "QT_QPA_PLATFORM";
bool isOffscreen = false; // By this process's decision, not the user's.

std::unique_ptr<Screens> makeScreens()
{
    if constexpr (built::x11) {
        if (session().isX11() || session().input == InputSource::x11)
            return makeX11Screens();
    }
    return makeQtScreens();
}

/// Null if the session's input cannot be heard.
std::unique_ptr<EventTap> makeEventTap(Screens& screens)
{
    if constexpr (built::x11) {
        if (session().input == InputSource::x11)
            return makeX11EventTap();
    }
    if constexpr (built::evdev) {
        if (session().input == InputSource::evdev)
            return makeEvdevEventTap(screens);
    }
    return nullptr;
}

/// The session's watchers combined into one flag, and the terminals of the focused program. The
/// terminals are asked at each key, since nothing reports their changes.
class SessionSecureInput final : public SecureInput
{
public:
    SessionSecureInput()
        : m_terminals(makeTerminalSecureInput(session().isX11()
                                                  ? TerminalSecureInput::Unknown::noTerminal
                                                  : TerminalSecureInput::Unknown::everyTerminal))
    {
        CombinedSecureInput::Sources sources;
        if constexpr (built::dbus) {
            sources.push_back(makeLogindSecureInput(makeQtTimer()));
            sources.push_back(makeScreenSaverSecureInput());
        }
        sources.push_back(makeLockerSecureInput(installedLockers()));
        auto prompt = makePromptSecureInput();
        const auto setFocus = [this, prompt = prompt.get()](pid_t process) {
            prompt->setFocus(process);
            m_terminals->setFocus(process);
        };
        // Without X11 only the focused accessible element identifies the focused process; many
        // terminals expose none.
        if constexpr (built::atspi)
            sources.push_back(makeAtspiSecureInput(
                makeQtTimer(), session().isX11() ? atspi::FocusReceiver() : setFocus));
        sources.push_back(std::move(prompt));
        m_sources.emplace(std::move(sources));
        if constexpr (built::x11) {
            if (session().isX11())
                m_activeWindow = makeX11ActiveWindow(setFocus);
        }
    }

    [[nodiscard]] SecureReason reason() const override
    {
        const auto reported = m_sources->reason();
        return reported != SecureReason::none ? reported : m_terminals->reason();
    }

private:
    std::unique_ptr<TerminalSecureInput> m_terminals;
    std::optional<CombinedSecureInput> m_sources;
    std::unique_ptr<X11ActiveWindow> m_activeWindow;
};

/// The user's settings, the desktop's look and the program's files; the other services are dummies.
Platform makeSilentPlatform(DefaultsChanges changes)
{
    auto platform = makeNonePlatform();
    platform.defaults = makeFileDefaultsStore(settingsFile(), changes);
    if constexpr (built::dbus)
        platform.appearance = makePortalAppearanceSettings();
    platform.executable = runningProgram();
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = applicationSupportFolder();
    return platform;
}

} // namespace

Platform makePlatform()
{
    if (isOffscreen)
        unsetenv(windowPlatform); // A new instance may find a display.
    const std::string missing = CLAVO_MISSING;
    if (!missing.empty())
        log::notice("compilé sans {}", missing);
    if (::geteuid() == 0)
        log::error("Clavo tourne en tant que root : ce n'est jamais nécessaire");
    const auto source = environment("CLAVO_INPUT");
    if (!source.empty() && source != "x11" && source != "evdev")
        log::notice("CLAVO_INPUT « {} » ignoré : il faut x11 ou evdev", source);

    auto platform = makeSilentPlatform(DefaultsChanges::written);
    platform.missing = missing;
    platform.screens = makeScreens();
    if (auto tap = makeEventTap(*platform.screens))
        platform.eventTap = std::move(tap);
    if (session().isX11()) {
        if constexpr (built::x11)
            platform.hotKeys = makeX11HotKeyService();
    } else {
        auto tapped = std::make_unique<TapHotKeyService>();
        platform.eventTap = tapped->watched(std::move(platform.eventTap));
        platform.hotKeys = std::move(tapped);
        if constexpr (built::dbus)
            platform.hotKeys = makePortalHotKeyService(std::move(platform.hotKeys));
    }
    platform.secureInput = std::make_unique<SessionSecureInput>();
    platform.audioOutput = makeAudioOutput();
    platform.inputAccess = makeInputAccess();
    const auto configuration = userFolder("XDG_CONFIG_HOME", ".config");
    platform.loginItem = makeAutostartEntry(autostartFolders(configuration), platform.executable);
    platform.relauncher = makeProcessRelauncher(platform.executable);
    platform.trayHosts = makeTrayHosts();
    platform.fileManager = makeQtFileManager();
    if constexpr (built::dbus)
        platform.fileManager = makeDBusFileManager(std::move(platform.fileManager));
    platform.canPlaceWindows = canPlaceQtWindows();
    return platform;
}

Platform makeDemonstrationPlatform()
{
    return makeSilentPlatform(DefaultsChanges::forgotten);
}

std::unique_ptr<InputAccess> makeInputAccess()
{
    if constexpr (built::x11) {
        if (session().input == InputSource::x11)
            return makeX11InputAccess();
    }
    if constexpr (built::evdev) {
        return makeEvdevInputAccess({
            .pkexec = QStandardPaths::findExecutable("pkexec").toStdString(),
            .grant = rootsProgram(runningProgram().parent_path() / "clavo-grant-input"),
        });
    }
    return makeNonePlatform().inputAccess;
}

std::unique_ptr<TrayHosts> makeTrayHosts()
{
    auto notifier = makeNoTrayHosts();
    auto windows = makeNoTrayHosts();
    if constexpr (built::dbus)
        notifier = makeDBusTrayHosts();
    if constexpr (built::x11) {
        if (session().isX11())
            windows = makeX11TrayHosts();
    }
    return makePreferredTrayHosts(std::move(notifier), std::move(windows));
}

PackFolders packFolders()
{
    return PackLibrary::folders(resourcesFolder(runningProgram()), applicationSupportFolder());
}

// Qt would end the process if it could not reach the display.
void prepareForWindows()
{
    if (session().windows == WindowSystem::wayland)
        return;
    bool isThere = !environment("DISPLAY").empty(); // Without X11 only Qt can ask the server.
    if constexpr (built::x11)
        isThere = isXServerThere();
    if (isThere || !environment(windowPlatform).empty())
        return;
    setenv(windowPlatform, "offscreen", /*overwrite=*/1);
    isOffscreen = true;
}

std::unique_ptr<Instance> makeInstance()
{
    if constexpr (built::dbus)
        return makeDBusInstance();
    else
        return makeNoInstance();
}

void sendLogToSystem()
{
    if (environment("CLAVO_LOG_LEVEL") == "debug")
        log::setThreshold(log::Level::debug);
    if constexpr (built::journal) {
        if (auto* const sink = journalSink(); sink && environment("CLAVO_LOG") != "stderr")
            log::setSink(sink);
    }
}

void returnFreedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace clavo
