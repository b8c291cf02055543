// SPDX-License-Identifier: MIT
#pragma once

#include "synth/AudioBuffer.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace clavo
{

/// Decodes a sound file of any format that its content shows, mixes its channels down to their
/// average and converts it to the format's rate. No other change. A file without frames gives no
/// samples.
///
/// Nothing when the format is not mono, or when the file cannot be read or decoded, holds a sample
/// that is no number, or is longer than any key sounds: two minutes, or 64 MiB. What a header
/// claims is never allocated, only what was really decoded.
[[nodiscard]] std::optional<std::vector<float>> loadSound(const std::filesystem::path& path,
                                                          const AudioFormat& format);

} // namespace clavo
