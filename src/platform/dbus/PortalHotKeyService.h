// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <memory>

namespace clavo
{

/// The shortcuts of the desktop portal; those of the fallback when the portal has no interface for
/// them or fails.
///
/// Never both: there are no shortcuts until the portal has answered, and one that the user refuses
/// in the portal stays refused. The user chooses the keys in the portal; the hot key is only the
/// preferred trigger. Thread: main, which runs a Qt event loop.
[[nodiscard]] std::unique_ptr<HotKeyService>
makePortalHotKeyService(std::unique_ptr<HotKeyService> fallback);

} // namespace clavo
