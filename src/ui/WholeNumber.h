// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// How whole numbers are written in the user's locale.
class WholeNumber : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// With the locale's digit grouping: "1,234,567".
    Q_INVOKABLE static QString grouped(qint64 number);
    /// Digits alone: "1234567".
    Q_INVOKABLE static QString plain(qint64 number);
};

} // namespace clavo
