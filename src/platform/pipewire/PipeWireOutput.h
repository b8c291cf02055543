// SPDX-License-Identifier: MIT
#pragma once

#include "audio/output/ServerBackedOutput.h"

#include <cstdint>
#include <memory>

namespace clavo
{

/// Plays through PipeWire, on the default device. `quantumFrames` at 44,100 per second is the
/// period asked for. The graph runs at the smallest that any of its streams asks for, within the
/// server's limits.
[[nodiscard]] std::unique_ptr<ServerBackedOutput> makePipeWireOutput(std::uint32_t quantumFrames);

} // namespace clavo
