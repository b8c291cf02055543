// SPDX-License-Identifier: MIT
#include "presentation/Backdrop.h"
#include "presentation/Shadow.h"

#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>

#include <set>

namespace clavo
{
namespace
{

QImage drawn(QQuickPaintedItem& item, const QColor& ground)
{
    QImage image(item.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    item.paint(&painter);
    return image;
}

TEST(Backdrop, IsDarkAndOpaqueEverywhere)
{
    Backdrop backdrop;
    backdrop.setSize({360, 225});

    const auto image = drawn(backdrop, Qt::transparent);

    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(image.pixelColor(x, y).alpha(), 255);
            ASSERT_LT(image.pixelColor(x, y).lightnessF(), 0.45F);
        }
    }
}

TEST(Backdrop, MixesShadesWhereAPlainGradientWouldShowBands)
{
    Backdrop backdrop;
    backdrop.setSize({720, 450});

    const auto image = drawn(backdrop, Qt::transparent);

    // Half-way down, where the gradient takes many pixels for one shade.
    std::set<int> reds;
    for (int x = 360; x < 368; ++x)
        reds.insert(image.pixelColor(x, 225).red());
    EXPECT_GT(reds.size(), 1U);
}

TEST(Shadow, IsDarkestInTheMiddleAndGoneAtTheEdge)
{
    Shadow shadow;
    shadow.setProperty("blur", 10);
    shadow.setProperty("radius", 8);
    shadow.setProperty("color", QColor(Qt::black));
    shadow.setSize({200, 160});

    const auto image = drawn(shadow, Qt::white);

    EXPECT_LT(image.pixelColor(100, 80).lightness(), 10);
    EXPECT_GT(image.pixelColor(0, 80).lightness(), 250);
    EXPECT_GT(image.pixelColor(100, 0).lightness(), 250);
    EXPECT_EQ(image.pixelColor(199, 159), QColor(Qt::white));
}

TEST(Shadow, IsHalfAsDarkAlongTheShape)
{
    Shadow shadow;
    shadow.setProperty("blur", 10);
    shadow.setProperty("color", QColor(Qt::black));
    shadow.setSize({300, 300});

    const auto image = drawn(shadow, Qt::white);

    const auto edge = static_cast<int>(shadow.reach());
    EXPECT_NEAR(image.pixelColor(edge, 150).lightness(), 127, 8);
    EXPECT_NEAR(image.pixelColor(150, edge).lightness(), 127, 8);
}

} // namespace
} // namespace clavo
