// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

#include <memory>

namespace clavo
{

/// An output for a machine without a sound server: renders at the pace of the clock and discards
/// the result, so that sounds end. Its thread lives only while the output runs.
[[nodiscard]] std::unique_ptr<AudioOutput> makeSilentOutput();

} // namespace clavo
