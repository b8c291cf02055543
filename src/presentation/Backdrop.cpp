// SPDX-License-Identifier: MIT
#include "presentation/Backdrop.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace clavo
{
namespace
{

struct Light {
    double red = 0; // 0 to 255.
    double green = 0;
    double blue = 0;
};

/// A light that fades from its centre like a normal distribution. Positions and spreads are
/// fractions of the background's width or height.
struct Glow {
    double x = 0;
    double y = 0;
    double spreadX = 0;
    double spreadY = 0;
    Light colour;
};

constexpr Light top{22, 21, 31};
constexpr Light bottom{8, 8, 12};
constexpr std::array<Glow, 4> glows{{
    {.x = 0.02, .y = -0.12, .spreadX = 0.32, .spreadY = 0.44, .colour = {72, 24, 36}},
    {.x = 1.00, .y = -0.04, .spreadX = 0.34, .spreadY = 0.52, .colour = {26, 24, 74}},
    {.x = 0.74, .y = 1.14, .spreadX = 0.34, .spreadY = 0.32, .colour = {46, 16, 48}},
    {.x = 0.08, .y = 1.12, .spreadX = 0.28, .spreadY = 0.28, .colour = {10, 26, 50}},
}};

std::vector<double> fading(double centre, double spread, int length)
{
    std::vector<double> values(static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto distance = (((static_cast<double>(i) + 0.5) / length) - centre) / spread;
        values[i] = std::exp(-distance * distance / 2);
    }
    return values;
}

/// The threshold of a pixel, 0 to 1, for an ordered 8 × 8 dither. The pattern is invisible and
/// compresses well as PNG.
double threshold(int x, int y)
{
    int value = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int column = (x >> bit) & 1;
        const int row = (y >> bit) & 1;
        value = (value << 2) | ((column ^ row) << 1) | row;
    }
    return (value + 0.5) / 64;
}

QImage background(QSize size)
{
    std::vector<std::vector<double>> across;
    std::vector<std::vector<double>> down;
    for (const auto& glow : glows) {
        across.push_back(fading(glow.x, glow.spreadX, size.width()));
        down.push_back(fading(glow.y, glow.spreadY, size.height()));
    }
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        const auto way = static_cast<double>(y) / size.height();
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            Light light{top.red + ((bottom.red - top.red) * way),
                        top.green + ((bottom.green - top.green) * way),
                        top.blue + ((bottom.blue - top.blue) * way)};
            for (std::size_t i = 0; i < glows.size(); ++i) {
                const auto strength =
                    across[i][static_cast<std::size_t>(x)] * down[i][static_cast<std::size_t>(y)];
                light.red += strength * glows[i].colour.red;
                light.green += strength * glows[i].colour.green;
                light.blue += strength * glows[i].colour.blue;
            }
            const auto dither = threshold(x, y);
            const auto shade = [&](double value) {
                return static_cast<int>(std::clamp(value + dither, 0.0, 255.0));
            };
            line[x] = qRgb(shade(light.red), shade(light.green), shade(light.blue));
        }
    }
    return image;
}

} // namespace

Backdrop::Backdrop(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setOpaquePainting(true);
}

void Backdrop::paint(QPainter* painter)
{
    // The pictures' own resolution: scaling would smear the dither.
    constexpr int pixels = 2;
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    const QRectF place(0, 0, width(), height());
    painter->drawImage(place, background((place.size() * pixels).toSize()));
}

} // namespace clavo
