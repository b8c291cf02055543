// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

#include <filesystem>

namespace clavo::evdev
{

using Access = InputAccess::State;

inline constexpr auto deviceFolder = "/dev/input";

/// What the devices of the folder say; leaves none of them open. notInThisLogin: the user has
/// joined the devices' group since this session was opened.
[[nodiscard]] Access accessToKeyboards(const std::filesystem::path& folder = deviceFolder);

/// Whether the file's name is one the kernel gives to input devices.
[[nodiscard]] bool isDeviceNode(const std::filesystem::path& node);

} // namespace clavo::evdev
