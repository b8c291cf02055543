// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/Screens.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// The tap of a desktop other than X11: reads every keyboard and mouse of the kernel, including the
/// virtual devices of remapping programs. The pointer is kept on the screens, which outlive the
/// tap.
///
/// create() is refused if no keyboard can be read. Devices may come and go, and read permission may
/// be granted after a device has appeared. The tap is lost when the kernel drops events of a device
/// and when the last device is gone. Modifiers that are held on a device when it is gone are
/// released. The kernel leaves a pointer's motion out while it is not needed, so that a moving
/// mouse wakes nothing. Thread: main, which runs a Qt event loop.
[[nodiscard]] std::unique_ptr<EventTap>
makeEvdevEventTap(Screens& screens, std::filesystem::path folder = "/dev/input");

} // namespace clavo
