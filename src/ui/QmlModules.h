// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Makes the QML modules Clavo and Clavo.Controls known to every engine of this process.
void registerQmlModules();

} // namespace clavo
