// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Makes the QML modules of the interface and Clavo.Test known to every engine of this process.
void registerTestModules();

} // namespace clavo
