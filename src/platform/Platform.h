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
#include "packs/PackLibrary.h"
#include "tray/TrayHosts.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// Every service of the platform, each behind its port.
struct Platform {
    std::unique_ptr<HotKeyService> hotKeys; // Which the tap may show its events.
    std::unique_ptr<EventTap> eventTap;
    std::unique_ptr<SecureInput> secureInput;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<AudioOutput> audioOutput;
    std::unique_ptr<InputAccess> inputAccess;
    std::unique_ptr<DefaultsStore> defaults;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Relauncher> relauncher;
    std::filesystem::path executable;         // Of the running program.
    std::filesystem::path resources;          // Of the application; empty where there are none.
    std::filesystem::path applicationSupport; // Of the current user.
};

/// The services of the platform the program runs on. The session's kind (X11, Wayland, none) is
/// decided here.
[[nodiscard]] Platform makePlatform();

/// The services for showing the program instead of running it. The settings are the user's, and
/// every change of them is forgotten with the process; the permission is granted, but no input is
/// heard; nothing sounds.
[[nodiscard]] Platform makeDemonstrationPlatform();

/// The permission alone: for a process that does nothing but tell it.
[[nodiscard]] std::unique_ptr<InputAccess> makeInputAccess();

/// The sound output alone, for a process that plays and does not listen. On Linux two variables of
/// the environment change the choice: CLAVO_AUDIO ("pipewire", "pulse" or "none") allows one alone,
/// CLAVO_QUANTUM (16 … 8192) is the period wished for in frames at 44,100 per second, 128 if not
/// set.
[[nodiscard]] std::unique_ptr<AudioOutput> makeAudioOutput();

/// Where the packs of the program and of its user are.
[[nodiscard]] PackFolders packFolders();

/// What takes the program's icon.
[[nodiscard]] std::unique_ptr<TrayHosts> makeTrayHosts();

/// What the desktop says of the look of programs.
[[nodiscard]] std::unique_ptr<AppearanceSettings> makeAppearanceSettings();

/// The session's instance of the program: found out before there is anything else.
[[nodiscard]] std::unique_ptr<Instance> makeInstance();

/// Comes before the application object: without a desktop to show them on, windows are drawn
/// nowhere, and the program runs all the same.
void prepareForWindows();

/// What shows the user a folder.
[[nodiscard]] std::unique_ptr<FileManager> makeFileManager();

/// Sends all log lines to the system's log, or leaves them on the standard error where there is
/// none.
void sendLogToSystem();

/// Makes the requests of the system and of the user at the terminal to end the program quit its
/// main loop.
void quitOnTermination();

/// Gives the system back what has been freed and is still kept for the next allocation.
void returnFreedMemory();

} // namespace clavo
