// SPDX-License-Identifier: MIT
#pragma once

#include <QRegion>
#include <QSize>

namespace clavo
{

/// Every pixel that a rectangle with rounded corners covers, if only in part.
[[nodiscard]] QRegion roundedRegion(QSize size, int radius);

} // namespace clavo
