// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"
#include "audio/output/ServerBackedOutput.h"
#include "time/Timer.h"

#include <memory>
#include <string>
#include <vector>

namespace clavo
{

/// One of the outputs to choose from.
struct NamedOutput {
    std::string name; // For the log.
    std::unique_ptr<ServerBackedOutput> output;
};

/// Plays through the best of several outputs that has a server. While none has one it plays on
/// `silent`: voices then run to their end unheard, so nothing is played late.
///
/// One output renders at a time. While it is not the best candidate, the better ones are asked to
/// connect again, with growing delays; while paused, none is asked. The candidate in use has one
/// log line when it starts, is lost and returns. The best candidate comes first.
[[nodiscard]] std::unique_ptr<AudioOutput> makeFallbackOutput(std::vector<NamedOutput> candidates,
                                                              std::unique_ptr<AudioOutput> silent,
                                                              std::unique_ptr<Timer> timer);

} // namespace clavo
