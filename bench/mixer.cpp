// SPDX-License-Identifier: MIT
#include "audio/realtime/Mixer.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::size_t blockFrames = 128;
constexpr std::size_t blocksPerSound = 40; // A sound of 116 ms, as long as a key's.

/// The same number of voices in every block, each with samples of its own, as in a flood of keys.
class SoundingMixer
{
public:
    SoundingMixer(std::size_t voices, float level)
        : m_sounds(voices, std::vector<float>(blockFrames * blocksPerSound))
    {
        for (std::size_t voice = 0; voice < voices; ++voice) {
            for (std::size_t i = 0; i < m_sounds[voice].size(); ++i)
                m_sounds[voice][i] = level * std::sin(static_cast<float>(i * (voice + 1)) / 100);
        }
    }

    void renderBlock()
    {
        if (m_block == 0)
            startAll();
        m_block = (m_block + 1) % blocksPerSound;
        m_mixer.render({.left = m_left, .right = m_right});
        benchmark::DoNotOptimize(m_left.data());
        benchmark::DoNotOptimize(m_right.data());
        benchmark::ClobberMemory();
    }

private:
    /// All sounds have come to their end in the block before.
    void startAll()
    {
        while (m_mixer.takeFinished()) {
        }
        for (std::size_t voice = 0; voice < m_sounds.size(); ++voice)
            static_cast<void>(
                m_mixer.start(voice, {.samples = m_sounds[voice], .left = 0.7F, .right = 0.7F}));
    }

    std::vector<std::vector<float>> m_sounds;
    std::array<float, blockFrames> m_left{};
    std::array<float, blockFrames> m_right{};
    std::size_t m_block = 0;
    Mixer m_mixer;
};

void renderBlocks(benchmark::State& state, float level)
{
    SoundingMixer mixer(static_cast<std::size_t>(state.range(0)), level);
    while (state.KeepRunning())
        mixer.renderBlock();
}

void silentBlock(benchmark::State& state)
{
    renderBlocks(state, 0);
}

/// Within full scale: the usual block.
void mixerBlock(benchmark::State& state)
{
    renderBlocks(state, 0.02F);
    state.SetComplexityN(state.range(0));
}

/// Beyond full scale: the limiter works on every frame.
void limitedBlock(benchmark::State& state)
{
    renderBlocks(state, 2.0F);
}

/// Before its first voice a block costs as much as about five voices; with these counted in, the
/// time is proportional to the voices.
double linearInVoices(benchmark::IterationCount voices)
{
    return static_cast<double>(voices) + 5;
}

BENCHMARK(silentBlock)->ArgName("voices")->Arg(0);
BENCHMARK(mixerBlock)
    ->ArgName("voices")
    ->RangeMultiplier(2)
    ->Range(1, Mixer::voiceCount)
    ->Complexity(linearInVoices);
BENCHMARK(limitedBlock)->ArgName("voices")->Arg(1)->Arg(Mixer::voiceCount);

} // namespace
} // namespace clavo
