// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Makes the QML module Clavo.Presentation, and those it uses, known to every engine of this
/// process.
void registerPresentationModule();

} // namespace clavo
