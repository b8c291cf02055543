// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace clavo
{

/// The files of the installed screen lockers that announce themselves on no bus (i3lock, swaylock,
/// …). They are looked for in PATH.
[[nodiscard]] std::vector<std::filesystem::path> installedLockers();

/// Secure while one of these lockers runs. The kernel reports when its file is opened, as it is at
/// the start of the program, and when its process ends. Thread: main, which runs a Qt event loop.
[[nodiscard]] std::unique_ptr<ObservableSecureInput>
makeLockerSecureInput(std::span<const std::filesystem::path> files);

} // namespace clavo
