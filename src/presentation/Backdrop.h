// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The dark background of every slide: a gradient with light in its corners, dithered to avoid
/// bands.
class Backdrop : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit Backdrop(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
};

} // namespace clavo
