// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ServerOutput.h"

#include <cstdint>

namespace clavo
{

/// Plays through PipeWire, on the default device.
class PipeWireOutput final : public ServerOutput
{
public:
    /// `quantumFrames` at 44,100 per second is the period wished for. The graph runs at the
    /// smallest wish of all its streams, within the server's limits.
    explicit PipeWireOutput(std::uint32_t quantumFrames);
};

} // namespace clavo
