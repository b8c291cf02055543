// SPDX-License-Identifier: MIT
#pragma once

#include "synth/AudioBuffer.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace clavo
{

/// Decodes a sound file, whose type is determined by its content, averages its channels and
/// converts it to the format's rate. A file without frames gives no samples.
///
/// Nothing when the format is not mono, or when the file cannot be read or decoded, contains NaN or
/// infinity, or exceeds two minutes or 64 MiB. Memory is allocated for decoded samples only, never
/// for the length that a header claims.
[[nodiscard]] std::optional<std::vector<float>> loadSound(const std::filesystem::path& path,
                                                          const AudioFormat& format);

} // namespace clavo
