// SPDX-License-Identifier: MIT
#include "ui/controls/Symbol.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace clavo
{

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setImplicitSize(16, 16);
    connect(this, &Symbol::colorChanged, this, [this] { update(); });
}

void Symbol::setName(const QString& name)
{
    if (name == m_name)
        return;
    m_name = name;
    m_picture.load(":/clavo/symbols/" + name + ".svg");
    emit nameChanged();
    update();
}

void Symbol::setSize(double size)
{
    if (size == this->size())
        return;
    setImplicitSize(size, size);
    emit sizeChanged();
}

void Symbol::paint(QPainter* painter)
{
    if (!isValid())
        return;
    // The picture is only a mask. Strokes drawn in a translucent colour would be darker where they
    // cross.
    const double scale = painter->deviceTransform().m11();
    const double side = std::min(width(), height());
    QImage picture((QSizeF(side, side) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    {
        QPainter brush(&picture);
        brush.setRenderHint(QPainter::Antialiasing);
        m_picture.render(&brush, picture.rect());
        brush.setCompositionMode(QPainter::CompositionMode_SourceIn);
        brush.fillRect(picture.rect(), m_color);
    }
    painter->drawImage(QRectF((width() - side) / 2, (height() - side) / 2, side, side), picture);
}

} // namespace clavo
