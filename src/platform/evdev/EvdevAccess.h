// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace clavo::evdev
{

/// What keeps this process from hearing the keyboards, or that nothing does.
enum class Access {
    granted,
    refused,        // The devices are there and none of the keyboards may be read.
    noKeyboard,     // There is no device at all, or only such as are no keyboards.
    notInThisLogin, // The user has joined the devices' group since this session was opened.
};

inline constexpr auto deviceFolder = "/dev/input";

/// Looks at all devices of the folder; leaves none of them open.
[[nodiscard]] Access accessToKeyboards(const std::filesystem::path& folder = deviceFolder);

/// Whether the file's name is one the kernel gives to input devices.
[[nodiscard]] bool isDeviceNode(const std::filesystem::path& node);

} // namespace clavo::evdev
