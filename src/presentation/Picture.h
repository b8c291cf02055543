// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>

namespace clavo
{

/// The picture as a PNG with 8 bits per sample, without alpha, marked as sRGB. Empty if it cannot
/// be encoded.
[[nodiscard]] QByteArray encodedPng(const QImage& picture);

} // namespace clavo
