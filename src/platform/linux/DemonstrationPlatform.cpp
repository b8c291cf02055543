// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/FileDefaultsStore.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/linux/RunningProgram.h"
#include "platform/none/GrantedInputAccess.h"
#include "platform/none/NoHotKeyService.h"
#include "platform/none/NoLoginItem.h"
#include "platform/none/NoRelauncher.h"
#include "platform/none/NoScreens.h"
#include "platform/none/NoSecureInput.h"
#include "platform/none/QuietEventTap.h"
#include "platform/none/SilentOutput.h"

namespace clavo
{

Platform makeDemonstrationPlatform()
{
    Platform platform;
    platform.eventTap = std::make_unique<QuietEventTap>();
    platform.secureInput = std::make_unique<NoSecureInput>();
    platform.screens = std::make_unique<NoScreens>();
    platform.hotKeys = std::make_unique<NoHotKeyService>();
    platform.audioOutput = std::make_unique<SilentOutput>();
    platform.inputAccess = std::make_unique<GrantedInputAccess>();
    platform.defaults =
        std::make_unique<FileDefaultsStore>(settingsFile(), FileDefaultsStore::Changes::forgotten);
    platform.loginItem = std::make_unique<NoLoginItem>();
    platform.relauncher = std::make_unique<NoRelauncher>();
    platform.executable = runningProgram();
    platform.resources = resourcesFolder(platform.executable);
    platform.applicationSupport = applicationSupportFolder();
    return platform;
}

} // namespace clavo
