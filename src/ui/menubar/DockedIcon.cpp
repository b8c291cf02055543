// SPDX-License-Identifier: MIT
#include "ui/menubar/DockedIcon.h"

#include <QBitmap>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QSurfaceFormat>

namespace clavo
{
namespace
{

constexpr int smallestSize = 16; // The host enlarges the window to fit its bar.

} // namespace

DockedIcon::DockedIcon(Background background) : m_background(background)
{
    if (m_background == Background::tray) {
        QSurfaceFormat format;
        format.setAlphaBufferSize(8);
        setFormat(format);
    }
    setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    resize(smallestSize, smallestSize);
    create();
    // The host sees the size hints only if they are set after create().
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
    if (m_background == Background::tray) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect({}, size()), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    } else {
        painter.fillRect(QRect({}, size()), m_backdrop);
    }
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
    // The pointer is the only reliable source of the window's place inside the host.
    const QRect place(event->globalPosition().toPoint() - point, size());
    if (event->button() == Qt::LeftButton)
        emit clicked(place);
    else if (event->button() == Qt::RightButton)
        emit menuRequested(place);
}

void DockedIcon::cutOut()
{
    if (m_background == Background::tray)
        return;
    QImage picture(size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    m_icon.paint(&painter, picture.rect());
    painter.end();
    // Leaves out faint pixels: on the backdrop they would be as opaque as the others.
    setMask(QRegion(QBitmap::fromImage(picture.createAlphaMask(Qt::ThresholdDither))));
}

} // namespace clavo
