// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>

namespace clavo
{

/// The StatusNotifier hosts of the session's bus.
///
/// Nothing waits for the bus: the first answer comes from the event loop, or at once if there is no
/// bus.
[[nodiscard]] std::unique_ptr<TrayHosts> makeDBusTrayHosts();

} // namespace clavo
