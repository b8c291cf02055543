// SPDX-License-Identifier: MIT
#include "ui/menubar/MenuBarSymbol.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QString>
#include <QSvgRenderer>

namespace clavo
{
namespace
{

constexpr double rimOpacity = 0.4;

QImage blank(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void tint(QImage& image, const QColor& color)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
}

/// The shape and what is within a pixel of the smallest size around it.
QImage widened(const QImage& shape)
{
    const double step = shape.width() / 22.0;
    QImage image = blank(shape.width());
    QPainter painter(&image);
    for (const double x : {-step, 0.0, step}) {
        for (const double y : {-step, 0.0, step})
            painter.drawImage(QPointF(x, y), shape);
    }
    return image;
}

QImage drawn(QSvgRenderer& symbol, int size, const QColor& color, double opacity)
{
    QImage shape = blank(size);
    {
        QPainter painter(&shape);
        symbol.render(&painter);
    }
    QImage rim = widened(shape);
    tint(shape, color);
    tint(rim, contrasting(color));

    QImage image = blank(size);
    QPainter painter(&image);
    painter.setOpacity(opacity * rimOpacity);
    painter.drawImage(0, 0, rim);
    painter.setOpacity(opacity);
    painter.drawImage(0, 0, shape);
    return image;
}

} // namespace

QColor contrasting(const QColor& color)
{
    return color.lightnessF() < 0.5F ? Qt::white : Qt::black;
}

QIcon menuBarSymbol(bool enabled, const QColor& color)
{
    QSvgRenderer symbol(QStringLiteral(":/clavo/menubar/") +
                        (enabled ? "keyboard.fill.svg" : "keyboard.svg"));
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 44, 48})
        icon.addPixmap(QPixmap::fromImage(drawn(symbol, size, color, enabled ? 1.0 : 0.5)));
    return icon;
}

} // namespace clavo
