// SPDX-License-Identifier: MIT
#include "presentation/PackTint.h"

#include "packs/SoundPack.h"

namespace clavo
{

QColor PackTint::tint(const QString& category)
{
    switch (packCategory(category.toStdString()).value_or(PackCategory::custom)) {
    case PackCategory::linear:
        return QColor::fromRgbF(0.36F, 0.62F, 1.0F);
    case PackCategory::tactile:
        return QColor::fromRgbF(1.0F, 0.6F, 0.2F);
    case PackCategory::clicky:
        return QColor::fromRgbF(0.3F, 0.85F, 0.75F);
    case PackCategory::special:
    case PackCategory::custom:
        return QColor::fromRgbF(0.75F, 0.5F, 1.0F);
    }
    Q_UNREACHABLE();
}

} // namespace clavo
