// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

#include <thread>

namespace clavo
{

/// The output of a machine that has none: renders at the pace of the clock and throws it away, so
/// that sounds come to their end. Its thread lives while it runs, and no longer.
class SilentOutput : public AudioOutput
{
public:
    void prepare(Mixer& mixer, std::function<void()> configurationChanged) override;
    void start() override;
    void pause() override;
    [[nodiscard]] bool isRunning() const override { return m_thread.joinable(); }
    [[nodiscard]] OutputStatus status() const override { return {}; }

private:
    Mixer* m_mixer = nullptr;
    std::jthread m_thread;
};

} // namespace clavo
