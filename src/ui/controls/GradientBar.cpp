// SPDX-License-Identifier: MIT
#include "ui/controls/GradientBar.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace clavo
{

GradientBar::GradientBar(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &GradientBar::changed, this, [this] { update(); });
}

void GradientBar::paint(QPainter* painter)
{
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, m_topColor);
    gradient.setColorAt(1, m_bottomColor);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    const auto radius = std::min({m_radius, width() / 2, height() / 2});
    painter->drawRoundedRect(QRectF(0, 0, width(), height()), radius, radius);
}

} // namespace clavo
