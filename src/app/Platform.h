// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"
#include "app/DefaultsStore.h"
#include "app/FileManager.h"
#include "app/InputAccess.h"
#include "app/Instance.h"
#include "app/LoginItem.h"
#include "app/Relauncher.h"
#include "audio/AudioOutput.h"
#include "input/EventTap.h"
#include "input/HotKeyService.h"
#include "input/Screens.h"
#include "input/SecureInput.h"
#include "tray/TrayHosts.h"

#include <filesystem>
#include <memory>
#include <string>

namespace clavo
{

/// All services of the platform, each behind its port.
struct Platform {
    /// The program's platform, made on first use and never destroyed.
    [[nodiscard]] static Platform& shared();

    std::unique_ptr<HotKeyService> hotKeys; // Outlives the tap, which may pass events to it.
    std::unique_ptr<EventTap> eventTap;
    std::unique_ptr<SecureInput> secureInput;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<AudioOutput> audioOutput;
    std::unique_ptr<InputAccess> inputAccess;
    std::unique_ptr<DefaultsStore> defaults;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Relauncher> relauncher;
    std::unique_ptr<TrayHosts> trayHosts;
    std::unique_ptr<AppearanceSettings> appearance;
    std::unique_ptr<FileManager> fileManager;
    std::unique_ptr<Instance> instance;       // Null until this process has become the instance.
    bool canPlaceWindows = true;              // Windows appear where the program puts them.
    std::filesystem::path executable;         // Of the running program.
    std::filesystem::path resources;          // Of the application; empty when there are none.
    std::filesystem::path applicationSupport; // Of the current user.
    std::string missing; // The technologies that the build lacks, as text for the user.
};

} // namespace clavo
