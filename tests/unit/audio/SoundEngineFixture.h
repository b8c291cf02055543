// SPDX-License-Identifier: MIT
#pragma once

#include "unit/audio/Rendered.h"

#include "audio/SoundEngine.h"
#include "fakes/FakeAudioOutput.h"
#include "fakes/SimulatedTime.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace clavo
{

/// A sound of one constant level, heard at 0.5657 times that level on both sides: centred, at the
/// engine's first volume.
inline AudioBufferPtr steady(float level, std::size_t frames)
{
    return std::make_shared<const AudioBuffer>(std::vector<float>(frames, level));
}

/// An engine over an output without a device, in simulated time. The draw is the test's.
class SoundEngineFixture : public testing::Test
{
protected:
    SoundEngine& engine()
    {
        if (!m_engine)
            m_engine.emplace(
                output, [this] { return time.makeTimer(); },
                [this](std::size_t count) {
                    choices.push_back(count);
                    return choice;
                });
        return *m_engine;
    }
    void destroyEngine() { m_engine.reset(); }

    /// The player that was used last.
    SoundEngine::Player lastPlayer()
    {
        const auto count = SoundEngine::playerCount;
        return engine()
            .players()[(static_cast<std::size_t>(engine().nextPlayer()) + count - 1) % count];
    }

    FakeAudioOutput output;
    SimulatedTime time;
    std::size_t choice = 0;
    std::vector<std::size_t> choices; // How many there were each time.

private:
    std::optional<SoundEngine> m_engine;
};

} // namespace clavo
