// SPDX-License-Identifier: MIT
#include "ui/PackCategoryTitle.h"

#include <QCoreApplication>

namespace clavo
{

QString title(PackCategory category)
{
    switch (category) {
    case PackCategory::linear:
        return QCoreApplication::translate("PackCategory", "Linear");
    case PackCategory::tactile:
        return QCoreApplication::translate("PackCategory", "Tactile");
    case PackCategory::clicky:
        return QCoreApplication::translate("PackCategory", "Clicky");
    case PackCategory::special:
        return QCoreApplication::translate("PackCategory", "Special");
    case PackCategory::custom:
        return QCoreApplication::translate("PackCategory", "My packs");
    }
    Q_UNREACHABLE();
}

} // namespace clavo
