// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"
#include "app/Platform.h"
#include "packs/PackLibrary.h"
#include "tray/TrayHosts.h"

#include <memory>

namespace clavo
{

/// The services of the platform the program runs on, all but the instance, which comes before them.
/// The session's kind (X11, Wayland, none) is decided here.
[[nodiscard]] Platform makePlatform();

/// The services for showing the program instead of running it. The settings are the user's, and
/// every change of them is forgotten with the process; the permission is granted, but no input is
/// heard; nothing sounds. The look is the desktop's.
[[nodiscard]] Platform makeDemonstrationPlatform();

/// The permission alone, for a process that does nothing but report it.
[[nodiscard]] std::unique_ptr<InputAccess> makeInputAccess();

/// The sound output alone, for a process that plays and does not listen. On Linux two variables of
/// the environment change the choice: CLAVO_AUDIO ("pipewire", "pulse" or "none") allows one alone,
/// CLAVO_QUANTUM (16 … 8192) is the period wished for in frames at 44,100 per second, 128 if not
/// set.
[[nodiscard]] std::unique_ptr<AudioOutput> makeAudioOutput();

/// The folders of the program's packs and of the user's own.
[[nodiscard]] PackFolders packFolders();

/// The tray alone, for a process that shows nothing but an icon.
[[nodiscard]] std::unique_ptr<TrayHosts> makeTrayHosts();

/// The session's instance of the program. It is claimed before anything else is made.
[[nodiscard]] std::unique_ptr<Instance> makeInstance();

/// Comes before the application object: without a desktop to show them on, windows are drawn
/// nowhere, and the program runs all the same.
void prepareForWindows();

/// Sends all log lines to the system's log, or leaves them on the standard error when there is
/// none.
void sendLogToSystem();

/// Makes the requests of the system and of the user at the terminal to end the program quit its
/// main loop.
void quitOnTermination();

/// Gives the system back what has been freed and is still kept for the next allocation.
void returnFreedMemory();

} // namespace clavo
