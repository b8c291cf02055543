// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

#include <filesystem>
#include <memory>
#include <string>

namespace clavo
{

/// The programs that ask for the permission and grant it; an empty path if one is missing.
struct GrantPrograms {
    std::filesystem::path pkexec;
    std::filesystem::path grant; // Replaceable by root alone.
};

/// The permission to read the keyboards among the kernel's input devices. polkit asks an
/// administrator for it and runs the grant program as root. Without polkit or an agent the commands
/// to run are logged instead. What a device is that may not be read is taken from the kernel's
/// descriptions of the devices. notInThisLogin: the user has joined the devices' group since this
/// session was opened.
[[nodiscard]] std::unique_ptr<InputAccess>
makeEvdevInputAccess(GrantPrograms programs, std::filesystem::path devices = "/dev/input",
                     std::filesystem::path descriptions = "/sys/class/input");

/// What the user can do about a missing access, a line each; empty if it is granted.
[[nodiscard]] std::string adviceOn(InputAccess::State access);

} // namespace clavo
