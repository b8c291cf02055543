// SPDX-License-Identifier: MIT
#include "platform/pulse/PulseOutput.h"

#include "platform/linux/QtTimer.h"
#include "platform/pulse/PulseStream.h"

#include <utility>

namespace clavo
{

PulseOutput::PulseOutput(std::uint32_t quantumFrames)
    : ServerOutput(
          [quantumFrames](std::function<void()> changed) {
              return PulseStream::open(quantumFrames, std::move(changed));
          },
          std::make_unique<QtTimer>(), std::make_unique<QtTimer>())
{
}

} // namespace clavo
