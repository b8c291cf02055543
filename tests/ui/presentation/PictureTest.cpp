// SPDX-License-Identifier: MIT
#include "presentation/Picture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

QImage coloured()
{
    QImage image(5, 3, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(200, 100, 50));
    image.setPixelColor(4, 2, QColor(1, 2, 3));
    return image;
}

TEST(Picture, IsEightBitsOfRedGreenAndBlue)
{
    const auto bytes = encodedPng(coloured());

    ASSERT_TRUE(bytes.startsWith("\x89PNG\r\n\x1a\n"));
    EXPECT_EQ(bytes.mid(12, 4), "IHDR");
    EXPECT_EQ(bytes.mid(16, 8), QByteArray::fromHex("0000000500000003"));
    EXPECT_EQ(bytes[24], 8) << "bits a sample";
    EXPECT_EQ(bytes[25], 2) << "colours without alpha";
}

TEST(Picture, SaysThatItIsStandardRgb)
{
    const auto bytes = encodedPng(coloured());

    EXPECT_EQ(bytes.mid(33, 13), QByteArray::fromHex("00000001735247420"
                                                     "0aece1ce9"));
    EXPECT_FALSE(bytes.contains("iCCP"));
    EXPECT_FALSE(bytes.contains("tRNS"));
}

TEST(Picture, CanBeRead)
{
    const auto read = QImage::fromData(encodedPng(coloured()), "png");

    EXPECT_EQ(read.size(), QSize(5, 3));
    EXPECT_FALSE(read.hasAlphaChannel());
    EXPECT_EQ(read.pixelColor(0, 0), QColor(200, 100, 50));
    EXPECT_EQ(read.pixelColor(4, 2), QColor(1, 2, 3));
}

TEST(Picture, NothingIsNoFile)
{
    EXPECT_TRUE(encodedPng({}).isEmpty());
}

} // namespace
} // namespace clavo
