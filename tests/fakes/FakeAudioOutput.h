// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/realtime/Mixer.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace clavo
{

/// An output without a device. The test renders its blocks, takes its server away and gives it
/// back.
class FakeAudioOutput : public AudioOutput
{
public:
    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override
    {
        m_mixer = &mixer;
        m_configurationChanged = std::move(configurationChanged);
    }
    void start() override
    {
        ++m_starts;
        m_isStarted = true;
    }
    void pause() override
    {
        ++m_pauses;
        m_isStarted = false;
    }
    [[nodiscard]] bool isRunning() const override { return m_isStarted && m_hasServer; }
    [[nodiscard]] OutputStatus status() const override
    {
        if (!m_hasServer)
            return {};
        return {.server = "Fake", .quantumFrames = 128, .sampleRate = 44100};
    }

    /// Takes the server away without a word, as before the first start.
    void setServer(bool isThere) { m_hasServer = isThere; }

    void loseServer()
    {
        m_hasServer = false;
        changeDevice();
    }
    void returnServer()
    {
        m_hasServer = true;
        changeDevice();
    }
    void changeDevice()
    {
        if (m_isStarted)
            m_configurationChanged();
    }

    /// The next block; silence when the output does not run.
    void render(StereoBlock out)
    {
        if (isRunning()) {
            m_mixer->render(out);
        } else {
            std::ranges::fill(out.left, 0.0F);
            std::ranges::fill(out.right, 0.0F);
        }
    }

    [[nodiscard]] int starts() const { return m_starts; }
    [[nodiscard]] int pauses() const { return m_pauses; }

private:
    Mixer* m_mixer = nullptr;
    std::function<void()> m_configurationChanged;
    bool m_isStarted = false;
    bool m_hasServer = true;
    int m_starts = 0;
    int m_pauses = 0;
};

} // namespace clavo
