// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"
#include "app/Platform.h"
#include "packs/PackLibrary.h"
#include "tray/TrayHosts.h"

#include <memory>

namespace clavo
{

/// The services of the platform that the program runs on, except the instance, which is created
/// before them.
[[nodiscard]] Platform makePlatform();

/// The services for showing the program instead of running it. The settings are the user's, but
/// changes to them are not saved. The permission is granted, but no input is heard and nothing
/// sounds. The look is the desktop's.
[[nodiscard]] Platform makeDemonstrationPlatform();

/// The permission alone, for a process that only reports it.
[[nodiscard]] std::unique_ptr<InputAccess> makeInputAccess();

/// The sound output alone, for a process that plays and does not listen. On Linux two variables of
/// the environment change the choice: CLAVO_AUDIO ("pipewire", "pulse" or "none") allows one alone,
/// CLAVO_QUANTUM (16 … 8192) is the requested period in frames at 44,100 per second, 128 if
/// not set.
[[nodiscard]] std::unique_ptr<AudioOutput> makeAudioOutput();

/// The folders of the program's packs and of the user's packs.
[[nodiscard]] PackFolders packFolders();

/// The tray alone, for a process that shows only an icon.
[[nodiscard]] std::unique_ptr<TrayHosts> makeTrayHosts();

/// The session's instance of the program. It is claimed before anything else is created.
[[nodiscard]] std::unique_ptr<Instance> makeInstance();

/// Leaves no copy of the memory, with the latest keys in it, on the disk when the process crashes.
void preventCoreDumps();

/// To be called before the application object is created. Without a desktop, windows are not shown
/// and the program runs nevertheless.
void prepareForWindows();

/// Sends all log lines to the system's log. Without one they stay on the standard error.
void sendLogToSystem();

/// Quits the main loop when the system, or the user at the terminal, requests the program to end.
void quitOnTermination();

/// Returns freed memory to the system that the allocator still keeps.
void returnFreedMemory();

} // namespace clavo
