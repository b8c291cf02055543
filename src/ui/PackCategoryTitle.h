// SPDX-License-Identifier: MIT
#pragma once

#include "packs/PackCategory.h"

#include <QString>

namespace clavo
{

/// What the user reads for the category.
[[nodiscard]] QString title(PackCategory category);

} // namespace clavo
