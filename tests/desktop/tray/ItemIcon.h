// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

namespace clavo
{

/// The icon of a StatusNotifier item as its host sees it over D-Bus.
struct ItemIcon {
    QString name;   // Of the icon in the themes; empty where only the picture counts.
    QImage picture; // The smallest one.
};

/// Of an item ("service/path"), as it is now.
[[nodiscard]] ItemIcon iconOf(const QString& item);

} // namespace clavo
