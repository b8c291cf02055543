// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>

namespace clavo
{

/// The picture as a PNG of 8 bits a sample, without alpha, that says it is sRGB. Empty where it
/// cannot be encoded.
[[nodiscard]] QByteArray encodedPng(const QImage& picture);

} // namespace clavo
