// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace clavo
{

/// The integrated loudness of mono sound at 44,100 per second by ITU-R BS.1770-4, Annex 1, in LUFS.
/// Minus infinity for silence and for sound shorter than 400 ms.
///
/// Every sample of a pack depends on it to the last bit, and a library may round differently on
/// another machine, so it is computed here.
[[nodiscard]] double integratedLoudness(std::span<const float> samples);

} // namespace clavo
