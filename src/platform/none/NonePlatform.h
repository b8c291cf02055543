// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"
#include "app/Platform.h"

#include <memory>

namespace clavo
{

/// The services of a system without any: listening is granted and no input comes, sounds are
/// rendered and discarded, there is no tray, no shortcut and no login item. The store and the
/// folders are left empty.
[[nodiscard]] Platform makeNonePlatform();

[[nodiscard]] std::unique_ptr<TrayHosts> makeNoTrayHosts();
[[nodiscard]] std::unique_ptr<HotKeyService> makeNoHotKeyService();

/// A session whose processes do not know each other.
[[nodiscard]] std::unique_ptr<Instance> makeNoInstance();

} // namespace clavo
