// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>

namespace clavo
{

/// Hosts of two kinds as one: the second kind is used while there is no host of the first.
///
/// The second kind is not watched before the first has answered, so that a desktop with both does
/// not get an icon of the wrong kind first.
[[nodiscard]] std::unique_ptr<TrayHosts> makePreferredTrayHosts(std::unique_ptr<TrayHosts> first,
                                                                std::unique_ptr<TrayHosts> second);

} // namespace clavo
