// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace clavo
{

/// A bar of a chart, from one colour at its top to another at its bottom, with round corners. Qt
/// Quick's software renderer leaves the corners of a Rectangle with a gradient jagged.
class GradientBar : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor topColor MEMBER m_topColor NOTIFY changed)
    Q_PROPERTY(QColor bottomColor MEMBER m_bottomColor NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)

public:
    explicit GradientBar(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QColor m_topColor;
    QColor m_bottomColor;
    double m_radius = 0;
};

} // namespace clavo
