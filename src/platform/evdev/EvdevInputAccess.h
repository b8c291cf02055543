// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "platform/evdev/EvdevAccess.h"

#include <filesystem>
#include <memory>
#include <string>

namespace clavo
{

/// The programs that ask for the permission and grant it; an empty path if one is missing.
struct GrantPrograms {
    std::filesystem::path pkexec;
    std::filesystem::path grant;
};

/// The permission to read the kernel's input devices. polkit asks an administrator for it and runs
/// the grant program as root. Without polkit or an agent the commands to run are logged instead.
[[nodiscard]] std::unique_ptr<InputAccess>
makeEvdevInputAccess(GrantPrograms programs, std::filesystem::path devices = evdev::deviceFolder);

/// What the user can do about a missing access, a line each; empty if it is granted.
[[nodiscard]] std::string adviceOn(evdev::Access access);

} // namespace clavo
