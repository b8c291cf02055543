// SPDX-License-Identifier: MIT
#include "ui/RoundedRegion.h"

#include <cmath>

namespace clavo
{

QRegion roundedRegion(QSize size, int radius)
{
    QRegion region(0, radius, size.width(), size.height() - 2 * radius);
    for (int y = 0; y < radius; ++y) {
        const int rise = radius - y - 1; // Of the row's inner edge above the corner's centre.
        const auto reach = std::sqrt(radius * radius - rise * rise);
        const int inset = radius - static_cast<int>(std::ceil(reach));
        const QRect row(inset, y, size.width() - 2 * inset, 1);
        region += row;
        region += row.translated(0, size.height() - 1 - 2 * y);
    }
    return region;
}

} // namespace clavo
