// SPDX-License-Identifier: MIT
#include "presentation/Picture.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <array>

namespace clavo
{
namespace
{

// The sRGB chunk. Qt would write a whole colour profile instead.
constexpr std::array<unsigned char, 13> standardColours{
    0,    0,    0,    1, // Length of the data in bytes.
    's',  'R',  'G',  'B',
    0,                       // Rendering intent: perceptual.
    0xae, 0xce, 0x1c, 0xe9}; // Checksum.

constexpr qsizetype signatureAndHeader = 8 + 25; // The chunk follows them.

// 0 to 100. Higher levels take seconds longer and save little.
constexpr int compression = 50;

} // namespace

QByteArray encodedPng(const QImage& picture)
{
    auto opaque = picture.convertToFormat(QImage::Format_RGB888);
    opaque.setColorSpace({});
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(compression);
    if (!writer.write(opaque))
        return {};
    return bytes.insert(signatureAndHeader,
                        QByteArrayView(standardColours.data(), std::ssize(standardColours)));
}

} // namespace clavo
