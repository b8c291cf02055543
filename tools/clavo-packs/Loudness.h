// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace clavo
{

/// The integrated loudness of mono sound at 44,100 per second by ITU-R BS.1770-4, Annex 1, in LUFS.
/// Minus infinity for silence and for sound shorter than 400 ms.
///
/// It decides the last bit of every sample of a pack, and a library rounds differently on every
/// machine, so it is computed here.
[[nodiscard]] double integratedLoudness(std::span<const float> samples);

} // namespace clavo
