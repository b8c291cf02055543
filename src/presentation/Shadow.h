// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace clavo
{

/// The soft shadow, or the glow, of a rounded rectangle that lies inside the item, its reach away
/// from every edge.
class Shadow : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    /// Of the rectangle's corners.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    /// The standard deviation of the normal distribution it is blurred with.
    Q_PROPERTY(double blur READ blur WRITE setBlur NOTIFY changed)
    /// How far the blur reaches.
    Q_PROPERTY(double reach READ reach NOTIFY changed)

public:
    explicit Shadow(QQuickItem* parent = nullptr);

    void setColor(const QColor& color);
    void setRadius(double radius);
    void setBlur(double blur);

    [[nodiscard]] QColor color() const { return m_color; }
    [[nodiscard]] double radius() const { return m_radius; }
    [[nodiscard]] double blur() const { return m_blur; }
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
