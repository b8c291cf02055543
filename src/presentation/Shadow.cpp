// SPDX-License-Identifier: MIT
#include "presentation/Shadow.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace clavo
{
namespace
{

/// The resolution of the blurred image. It has no finer detail that more pixels could show.
constexpr double pixelsPerBlur = 6;

/// Replaces each value of a line by the mean of the values within `reach` of it. `stride` is the
/// distance in memory between neighbours.
void average(float* values, std::size_t count, std::size_t stride, std::size_t reach)
{
    std::vector<float> sums(count + 1);
    for (std::size_t i = 0; i < count; ++i)
        sums[i + 1] = sums[i] + values[i * stride];
    const auto width = static_cast<float>((2 * reach) + 1);
    for (std::size_t i = 0; i < count; ++i) {
        const auto first = i < reach ? 0 : i - reach;
        const auto last = std::min(i + reach + 1, count);
        values[i * stride] = (sums[last] - sums[first]) / width;
    }
}

/// The opacity of each pixel, 0 to 1. Three moving averages in a row are close to a normal
/// distribution.
std::vector<float> blurred(const QImage& shape, double deviation)
{
    const auto width = static_cast<std::size_t>(shape.width());
    const auto height = static_cast<std::size_t>(shape.height());
    std::vector<float> values(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        const auto* const line = shape.constScanLine(static_cast<int>(y));
        std::transform(line, line + width, values.data() + (y * width),
                       [](uchar alpha) { return static_cast<float>(alpha) / 255; });
    }
    const auto boxWidth = std::sqrt((4 * deviation * deviation) + 1);
    const auto reach = static_cast<std::size_t>(std::lround((boxWidth - 1) / 2));
    for (int pass = 0; pass < 3; ++pass) {
        for (std::size_t y = 0; y < height; ++y)
            average(values.data() + (y * width), width, 1, reach);
        for (std::size_t x = 0; x < width; ++x)
            average(values.data() + x, height, width, reach);
    }
    return values;
}

QImage coloured(const std::vector<float>& opacities, QSize size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32);
    const auto width = static_cast<std::size_t>(size.width());
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* const values = opacities.data() + (static_cast<std::size_t>(y) * width);
        for (std::size_t x = 0; x < width; ++x) {
            const auto alpha = std::lround(values[x] * static_cast<float>(color.alpha()));
            line[x] = qRgba(color.red(), color.green(), color.blue(), static_cast<int>(alpha));
        }
    }
    return image;
}

} // namespace

Shadow::Shadow(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &Shadow::changed, this, [this] { update(); });
}

void Shadow::paint(QPainter* painter)
{
    const auto scale = pixelsPerBlur / std::max(m_blur, pixelsPerBlur / 2);
    const auto size = (QSizeF(width(), height()) * scale).toSize().expandedTo({1, 1});
    QImage shape(size, QImage::Format_Alpha8);
    shape.fill(0);
    {
        QPainter brush(&shape);
        brush.setRenderHint(QPainter::Antialiasing);
        brush.scale(size.width() / width(), size.height() / height());
        brush.setPen(Qt::NoPen);
        brush.setBrush(Qt::black);
        const auto edge = reach();
        brush.drawRoundedRect(QRectF(0, 0, width(), height()).adjusted(edge, edge, -edge, -edge),
                              m_radius, m_radius);
    }
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(QRectF(0, 0, width(), height()),
                       coloured(blurred(shape, m_blur * scale), size, m_color));
}

} // namespace clavo
