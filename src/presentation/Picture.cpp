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

// Qt would describe the colours by a whole profile instead.
constexpr std::array<unsigned char, 13> standardColours{
    0,    0,    0,    1, // One byte of data:
    's',  'R',  'G',  'B',
    0,                       // perceptual,
    0xae, 0xce, 0x1c, 0xe9}; // and the checksum.

constexpr qsizetype signatureAndHeader = 8 + 25; // The chunk comes right behind them.

// Of zlib's from 0 to 100. What more would save is not worth the seconds.
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
