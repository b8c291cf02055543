// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace clavo
{

inline constexpr int samplesPerSecond = 44100; // Of all sound in the program.

/// The one format of all sound in the program: mono, 32-bit float, 44,100 samples per second.
struct AudioFormat {
    double sampleRate = samplesPerSecond;
    unsigned channels = 1;

    bool operator==(const AudioFormat&) const = default;
};

/// One sound, ready to play. Immutable, so that the audio thread may read it at any time. Owns: its
/// samples, or a share of the block that contains them.
class AudioBuffer
{
public:
    explicit AudioBuffer(std::vector<float> samples)
    {
        auto memory = std::make_shared<const std::vector<float>>(std::move(samples));
        m_samples = *memory;
        m_memory = std::move(memory);
    }

    /// A part of a block that is no longer written to.
    AudioBuffer(std::shared_ptr<const float[]> block, std::span<const float> samples)
        : m_memory(std::move(block)), m_samples(samples)
    {
    }

    [[nodiscard]] std::span<const float> samples() const { return m_samples; }

private:
    std::shared_ptr<const void> m_memory;
    std::span<const float> m_samples;
};

using AudioBufferPtr = std::shared_ptr<const AudioBuffer>;

} // namespace clavo
