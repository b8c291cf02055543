// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppLanguage.h"

#include <string>
#include <vector>

namespace clavo
{

/// The system's languages as BCP 47 names, best first.
[[nodiscard]] std::vector<std::string> systemLanguages();

/// Shows the application's texts, those of Qt's own dialogs, dates and numbers in the language from
/// now on; `system` is none and changes nothing. Once, with the application object made and no
/// interface yet.
void installTranslation(AppLanguage language);

} // namespace clavo
