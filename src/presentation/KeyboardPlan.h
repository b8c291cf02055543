// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// One key of a drawn keyboard. Positions and widths are in units of a letter key's width.
struct PlannedKey {
    Q_GADGET
    QML_VALUE_TYPE(plannedKey)
    Q_PROPERTY(double column MEMBER column CONSTANT)
    Q_PROPERTY(int row MEMBER row CONSTANT)
    Q_PROPERTY(double width MEMBER width CONSTANT)
    Q_PROPERTY(QString legend MEMBER legend CONSTANT)

public:
    double column = 0;
    int row = 0;
    double width = 1;
    QString legend; // Only letters and digits have one.

    bool operator==(const PlannedKey&) const = default;
};

/// The keys of a drawn keyboard, in five rows of the same width.
class KeyboardPlan : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QList<clavo::PlannedKey> keys READ keys CONSTANT)
    Q_PROPERTY(int rows READ rows CONSTANT)
    Q_PROPERTY(int columns READ columns CONSTANT)

public:
    [[nodiscard]] static QList<PlannedKey> keys();
    [[nodiscard]] static int rows() { return 5; }
    [[nodiscard]] static int columns() { return 15; }

    /// The key with this legend; a key without a legend if there is none.
    [[nodiscard]] Q_INVOKABLE static clavo::PlannedKey key(const QString& legend);
};

} // namespace clavo
