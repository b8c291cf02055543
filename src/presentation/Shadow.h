// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The soft shadow or glow of a rounded rectangle. The rectangle is inset from every edge of the
/// item by `reach`.
class Shadow : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// Of the rectangle's corners.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    /// The standard deviation of the normal distribution that blurs the rectangle.
    Q_PROPERTY(double blur MEMBER m_blur NOTIFY changed)
    /// The distance up to which the shadow is visible.
    Q_PROPERTY(double reach READ reach NOTIFY changed)

public:
    explicit Shadow(QQuickItem* parent = nullptr);

    [[nodiscard]] double reach() const { return 3 * m_blur; }

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QColor m_color = Qt::black;
    double m_radius = 0;
    double m_blur = 10;
};

} // namespace clavo
