// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace clavo
{

/// How loud mono sound at 44,100 per second is as a whole: the integrated loudness of ITU-R
/// BS.1770-4, Annex 1 in LUFS. Minus infinity for silence and for what is shorter than 400 ms.
[[nodiscard]] double integratedLoudness(std::span<const float> samples);

} // namespace clavo
