// SPDX-License-Identifier: MIT
#include "ui/menubar/MenuBarSymbol.h"

#include "ui/controls/Appearance.h"
#include "ui/menubar/DockedIcon.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <string>

namespace clavo
{
namespace
{

/// The bars of desktops, from light to dark.
const QColor bars[] = {"#ffffff", "#f6f5f4", "#eff0f1", "#353535", "#2a2e32", "#202020", "#000000"};
constexpr double leastShare = 0.125; // A line around the keyboard is a little more.
constexpr int sizes[] = {16, 22, 24, 32, 44, 48};

class MenuBarSymbolTest : public testing::Test
{
protected:
    /// What is seen of the symbol in a bar of this colour.
    [[nodiscard]] QImage seenIn(const QColor& bar, bool enabled, const QColor& color,
                                int size) const
    {
        QImage image(size, size, QImage::Format_RGB32);
        image.fill(bar);
        QPainter painter(&image);
        painter.drawPixmap(0, 0, menuBarSymbol(enabled, color).pixmap(QSize(size, size)));
        return image;
    }

    /// The share of the picture that has a contrast of 3 to what is there in the other one.
    [[nodiscard]] static double shareOfContrast(const QImage& image, const QImage& other)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (Appearance::contrast(image.pixelColor(x, y), other.pixelColor(x, y)) >= 3)
                    ++count;
            }
        }
        return static_cast<double>(count) / (image.width() * image.height());
    }

    /// The same with a bar of one colour.
    [[nodiscard]] static double shareOfContrast(const QImage& image, const QColor& bar)
    {
        QImage empty(image.size(), QImage::Format_RGB32);
        empty.fill(bar);
        return shareOfContrast(image, empty);
    }

    template <typename Check> static void forEachCase(Check check)
    {
        for (const auto& bar : bars) {
            for (const QColor& color : {QColor(Qt::black), QColor(Qt::white)}) {
                for (const int size : sizes) {
                    SCOPED_TRACE(color.name().toStdString() + " in " + bar.name().toStdString() +
                                 " at " + std::to_string(size));
                    check(bar, color, size);
                }
            }
        }
    }

private:
    bool m_hasNoDisplay = qputenv("QT_QPA_PLATFORM", "offscreen");
    int m_argumentCount = 1;
    char m_program[6] = "clavo";
    char* m_arguments[2] = {m_program, nullptr};
    QGuiApplication m_application{m_argumentCount, m_arguments};
};

TEST_F(MenuBarSymbolTest, IsSeenInABarOfAnyColor)
{
    forEachCase([&](const QColor& bar, const QColor& color, int size) {
        EXPECT_GE(shareOfContrast(seenIn(bar, true, color, size), bar), leastShare) << "on";
        EXPECT_GE(shareOfContrast(seenIn(bar, false, color, size), bar), leastShare) << "off";
    });
}

TEST_F(MenuBarSymbolTest, OnAndOffDifferInABarOfAnyColor)
{
    forEachCase([&](const QColor& bar, const QColor& color, int size) {
        EXPECT_GE(shareOfContrast(seenIn(bar, true, color, size), seenIn(bar, false, color, size)),
                  leastShare);
    });
}

TEST_F(MenuBarSymbolTest, IsFilledAndOpaqueWhenOnAndAnOutlineAtHalfOpacityWhenOff)
{
    const auto on = menuBarSymbol(true, Qt::black).pixmap(QSize(16, 16)).toImage();
    const auto off = menuBarSymbol(false, Qt::black).pixmap(QSize(16, 16)).toImage();
    const QPoint edge(8, 3);
    const QPoint betweenTheKeys(8, 8);

    EXPECT_EQ(on.pixelColor(edge), QColor(Qt::black));
    EXPECT_EQ(on.pixelColor(betweenTheKeys), QColor(Qt::black));
    const auto seen = seenIn(Qt::white, false, Qt::black, 16);
    EXPECT_NEAR(seen.pixelColor(edge).red(), 128, 2);
    EXPECT_EQ(seen.pixelColor(betweenTheKeys), QColor(Qt::white));
    EXPECT_LT(off.pixelColor(betweenTheKeys).alphaF(), 1);
}

TEST_F(MenuBarSymbolTest, AtTheSmallestSizeEveryKeyIsOnPixelsOfItsOwn)
{
    const auto seen = seenIn(Qt::white, true, Qt::black, 16);

    int gray = 0;
    for (int y = 4; y < 12; ++y) {
        for (int x = 2; x < 14; ++x) {
            const auto color = seen.pixelColor(x, y);
            if (color != Qt::black && color != Qt::white)
                ++gray;
        }
    }

    EXPECT_EQ(gray, 0);
}

TEST_F(MenuBarSymbolTest, DockedOnABackdropItHasRoundCorners)
{
    DockedIcon icon(DockedIcon::Background::backdrop);
    icon.setIcon(menuBarSymbol(true, Qt::black), Qt::white);
    ASSERT_EQ(icon.size(), QSize(16, 16));

    EXPECT_FALSE(icon.mask().contains(QPoint(0, 2)));
    EXPECT_TRUE(icon.mask().contains(QPoint(8, 2)));
    EXPECT_TRUE(icon.mask().contains(QPoint(8, 8)));
}

TEST_F(MenuBarSymbolTest, IsASquareInTheMiddleOfAHighPlace)
{
    QImage image(16, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        menuBarSymbol(true, Qt::black).paint(&painter, image.rect());
    }

    EXPECT_EQ(image.copy(0, 2, 16, 16), seenIn(Qt::white, true, Qt::black, 16));
}

} // namespace
} // namespace clavo
