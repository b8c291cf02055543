// SPDX-License-Identifier: MIT
#pragma once

#include "synth/AudioBuffer.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace clavo
{

/// A sound file that is being decoded, in steps of a few milliseconds even if it is long.
class SoundDecoder
{
public:
    virtual ~SoundDecoder() = default;

    /// Decodes a little more; false when there is no more to do.
    [[nodiscard]] virtual bool step() = 0;

    /// What loadSound() returns, after the last step. To be taken once.
    [[nodiscard]] virtual std::optional<std::vector<float>> takeSamples() = 0;
};

/// A decoder for loading a sound as loadSound() does. Reads nothing before its first step.
[[nodiscard]] std::unique_ptr<SoundDecoder> makeSoundDecoder(std::filesystem::path path,
                                                             const AudioFormat& format);

/// Decodes a sound file, whose type is determined by its content, averages its channels and
/// converts it to the format's rate. A file without frames gives no samples.
///
/// Nothing when the format is not mono, or when the file cannot be read or decoded, contains NaN or
/// infinity, or exceeds two minutes or 64 MiB. Memory is allocated for decoded samples only, never
/// for the length that a header claims.
[[nodiscard]] std::optional<std::vector<float>> loadSound(const std::filesystem::path& path,
                                                          const AudioFormat& format);

} // namespace clavo
