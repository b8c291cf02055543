// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The colour of a category of packs.
class PackTint : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Of the category with this text in a manifest; an unknown one has that of the user's packs.
    [[nodiscard]] Q_INVOKABLE static QColor tint(const QString& category);
};

} // namespace clavo
