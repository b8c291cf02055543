// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ServerOutput.h"

#include <cstdint>

namespace clavo
{

/// Plays through PulseAudio, or a server that speaks its protocol, on the default device.
class PulseOutput final : public ServerOutput
{
public:
    /// `quantumFrames` at 44,100 per second is how much the server is to ask for at a time.
    explicit PulseOutput(std::uint32_t quantumFrames);
};

} // namespace clavo
