// SPDX-License-Identifier: MIT
#pragma once

#include "audio/output/ServerBackedOutput.h"

#include <cstdint>
#include <memory>

namespace clavo
{

/// Plays through PulseAudio, or a server with its protocol, on the default device; starts no
/// server. `quantumFrames` at 44,100 per second is the amount that the server should request at a
/// time.
[[nodiscard]] std::unique_ptr<ServerBackedOutput> makePulseOutput(std::uint32_t quantumFrames);

} // namespace clavo
