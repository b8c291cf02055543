// SPDX-License-Identifier: MIT
#include "clavo-type/Typist.h"

#include "app/KeySounds.h"
#include "synth/SplitMix64.h"

#include <algorithm>
#include <utility>

namespace clavo
{
namespace
{

IndexDraw seededDraw(std::uint64_t seed)
{
    return [random = SplitMix64{seed}](std::size_t count) mutable {
        return static_cast<std::size_t>(random.uniform() * static_cast<double>(count));
    };
}

/// A timer that never fires: the output is never idle.
class NeverDue final : public Timer
{
public:
    void start(std::chrono::milliseconds /*delay*/, std::function<void()> /*due*/) override {}
    void stop() override {}
    [[nodiscard]] bool isRunning() const override { return false; }
};

} // namespace

Typist::Typist(AudioOutput& output, SoundBank bank, std::uint64_t seed)
    : m_sound(output, std::make_unique<NeverDue>, seededDraw(seed))
{
    m_sound.setVolume(static_cast<float>(m_settings.volume));
    m_sound.setKeyBank(std::move(bank));
}

void Typist::type(const InputMonitor::Key& key)
{
    playKey(m_sound, m_settings, key);
}

std::size_t longestSound(const SoundBank& bank)
{
    std::size_t longest = 0;
    for (const auto* const sounds : {&bank.press, &bank.release}) {
        for (const auto& [scancode, variants] : *sounds) {
            for (const auto& variant : variants)
                longest = std::max(longest, variant->samples().size());
        }
    }
    return longest;
}

} // namespace clavo
