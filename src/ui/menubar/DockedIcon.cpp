// SPDX-License-Identifier: MIT
#include "ui/menubar/DockedIcon.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>

namespace clavo
{
namespace
{

constexpr int smallestSize = 16; // The host gives more where its bar is higher.

} // namespace

DockedIcon::DockedIcon()
{
    setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    resize(smallestSize, smallestSize);
    create();
    // After create(): only then is the host told.
    setMinimumSize({smallestSize, smallestSize});
}

void DockedIcon::setIcon(const QIcon& icon, const QColor& backdrop)
{
    m_icon = icon;
    m_backdrop = backdrop;
    cutOut();
    update();
}

void DockedIcon::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(QRect({}, size()), m_backdrop);
    m_icon.paint(&painter, QRect({}, size()));
}

void DockedIcon::resizeEvent(QResizeEvent* event)
{
    QRasterWindow::resizeEvent(event);
    cutOut();
}

void DockedIcon::mouseReleaseEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    if (!QRect({}, size()).contains(point))
        return;
    // Where the host has put us is known for certain only from the pointer.
    const QRect place(event->globalPosition().toPoint() - point, size());
    if (event->button() == Qt::LeftButton)
        emit clicked(place);
    else if (event->button() == Qt::RightButton)
        emit menuRequested(place);
}

void DockedIcon::cutOut()
{
    QPixmap picture(size());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    m_icon.paint(&painter, picture.rect());
    painter.end();
    setMask(QRegion(picture.mask()));
}

} // namespace clavo
