// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/realtime/Mixer.h"
#include "desktop/user/SinkRecorder.h"
#include "eventloop/EventLoop.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace clavo
{

/// An output on the virtual desktop, used as the program uses it: started again when it is lost.
class OutputFixture : public testing::Test
{
protected:
    OutputFixture();

    void use(std::unique_ptr<AudioOutput> output);

    /// Runs on the server of that name.
    [[nodiscard]] bool runsOn(const std::string& server);

    /// Plays the tone on the left side until the sink has played it whole; some attempts may be
    /// lost while the server moves the stream.
    [[nodiscard]] bool isHeardOn(const std::string& sink);

    /// Runs a program of the desktop and returns what it says.
    static std::string ask(const std::string& command);

    EventLoop m_eventLoop;
    std::vector<float> m_tone; // A tenth of a second of 441 Hz, half of full scale.
    Mixer m_mixer;
    std::unique_ptr<AudioOutput> m_output;
};

} // namespace clavo
