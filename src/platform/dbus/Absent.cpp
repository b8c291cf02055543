// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusFileManager.h"
#include "platform/dbus/DBusInstance.h"
#include "platform/dbus/DBusTrayHosts.h"
#include "platform/dbus/LogindSecureInput.h"
#include "platform/dbus/PortalAppearanceSettings.h"
#include "platform/dbus/PortalHotKeyService.h"
#include "platform/dbus/ScreenSaverSecureInput.h"

namespace clavo
{

std::unique_ptr<FileManager> makeDBusFileManager(std::unique_ptr<FileManager> fallback)
{
    return fallback;
}

std::unique_ptr<Instance> makeDBusInstance()
{
    return nullptr;
}

std::unique_ptr<TrayHosts> makeDBusTrayHosts()
{
    return nullptr;
}

std::unique_ptr<ObservableSecureInput> makeLogindSecureInput(std::unique_ptr<Timer>)
{
    return nullptr;
}

std::unique_ptr<AppearanceSettings> makePortalAppearanceSettings()
{
    return nullptr;
}

std::unique_ptr<HotKeyService> makePortalHotKeyService(std::unique_ptr<HotKeyService> fallback)
{
    return fallback;
}

std::unique_ptr<ObservableSecureInput> makeScreenSaverSecureInput()
{
    return nullptr;
}

} // namespace clavo
