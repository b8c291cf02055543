// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"
#include "app/Platform.h"

#include <memory>

namespace clavo
{

/// The services of a system that has none: listening is granted but there is no input, sounds are
/// rendered and discarded, there is no tray, no shortcut and no login item. The store and the
/// folders are empty.
[[nodiscard]] Platform makeNonePlatform();

[[nodiscard]] std::unique_ptr<TrayHosts> makeNoTrayHosts();
[[nodiscard]] std::unique_ptr<HotKeyService> makeNoHotKeyService();

/// The instance on a system whose processes cannot find each other.
[[nodiscard]] std::unique_ptr<Instance> makeNoInstance();

} // namespace clavo
