// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

#include <filesystem>

namespace clavo::evdev
{

using Access = InputAccess::State;

inline constexpr auto deviceFolder = "/dev/input";

/// The access to the keyboards of the folder. notInThisLogin: the user has joined the devices'
/// group since this session was opened.
[[nodiscard]] Access accessToKeyboards(const std::filesystem::path& folder = deviceFolder);

/// Whether the file's name is that of an input device.
[[nodiscard]] bool isDeviceNode(const std::filesystem::path& node);

} // namespace clavo::evdev
