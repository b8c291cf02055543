// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace clavo
{

/// The one format of all sound in the program: mono, 32-bit float, 44,100 samples per second.
struct AudioFormat {
    double sampleRate = 44100;
    unsigned channels = 1;

    bool operator==(const AudioFormat&) const = default;
};

/// One sound, ready to play. Immutable, so that the audio thread may read it at any time.
class AudioBuffer
{
public:
    explicit AudioBuffer(std::vector<float> samples) : m_samples(std::move(samples)) {}

    [[nodiscard]] std::span<const float> samples() const { return m_samples; }

private:
    std::vector<float> m_samples;
};

using AudioBufferPtr = std::shared_ptr<const AudioBuffer>;

} // namespace clavo
