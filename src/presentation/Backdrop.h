// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickPaintedItem>

namespace clavo
{

/// The dark ground of every slide: a gradient with light in its corners, free of bands.
class Backdrop : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit Backdrop(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
};

} // namespace clavo
